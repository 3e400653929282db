#include "data/goods/good_fields.h"

#include <algorithm>
#include <array>

namespace goods {

namespace {

using R = TGoodInfoRec;

const std::array Fields{
    GoodField{QLatin1String("Code"), &R::Code, Together::Alone, Written::Insert},
    GoodField{QLatin1String("GrpCode"), &R::GrpCode},
    GoodField{QLatin1String("tags"), &R::tags},
    GoodField{QLatin1String("Name"), &R::Name, Together::Name},
    GoodField{QLatin1String("kala_name"), &R::kala_name, Together::Name},
    GoodField{QLatin1String("kala_type"), &R::kala_type, Together::Name},
    GoodField{QLatin1String("kala_index"), &R::kala_index, Together::Name},
    GoodField{QLatin1String("AbbName"), &R::AbbName},
    GoodField{QLatin1String("Pos"), &R::Pos},
    GoodField{QLatin1String("Position"), &R::Position},
    GoodField{QLatin1String("OffPercent"), &R::OffPercent},
    GoodField{QLatin1String("MinAva"), &R::MinAva},
    GoodField{QLatin1String("Unit"), &R::Unit, Together::Units, Written::Always, Empty::AsNull},
    GoodField{QLatin1String("Unit2"), &R::Unit2, Together::Units, Written::Always, Empty::AsNull},
    GoodField{QLatin1String("AvaBgPrd"), &R::AvaBgPrd, Together::Opening},
    GoodField{QLatin1String("AvaBgPrd2"), &R::AvaBgPrd2, Together::Opening},
    GoodField{QLatin1String("CostBgPrd"), &R::CostBgPrd},
    GoodField{QLatin1String("Store"), &R::Store, Together::Opening, Written::Always, Empty::AsNull},
    GoodField{QLatin1String("SMSCode"), &R::SMSCode, Together::Alone, Written::Always, Empty::AsNull},
    GoodField{QLatin1String("ChargeExempt"), &R::ChargeExempt, Together::Toll},
    GoodField{QLatin1String("ChargePercent"), &R::ChargePercent, Together::Toll},
    GoodField{QLatin1String("TaxExempt"), &R::TaxExempt, Together::Tax},
    GoodField{QLatin1String("TaxPercent"), &R::TaxPercent, Together::Tax},
    GoodField{QLatin1String("Meghdar_Formool"), &R::Meghdar_Formool, Together::Units},
    GoodField{QLatin1String("Weight"), &R::Weight},
    GoodField{QLatin1String("Height"), &R::Height},
    GoodField{QLatin1String("Width"), &R::Width},
    GoodField{QLatin1String("Length"), &R::Length},
    GoodField{QLatin1String("GroupDiscount"), &R::GroupDiscount},
    GoodField{QLatin1String("DetailUniqueCode"), &R::DetailUniqueCode},
    GoodField{QLatin1String("Tax_In_SellCosts"), &R::Tax_In_SellCosts},
    GoodField{QLatin1String("Tax_In_BuyCosts"), &R::Tax_In_BuyCosts},
    GoodField{QLatin1String("Comment"), &R::Comment},
    GoodField{QLatin1String("CreatedTime"), &R::CreatedTime, Together::Created, Written::Insert},
    GoodField{QLatin1String("CreatedDate"), &R::CreatedDate, Together::Created, Written::Insert},
    GoodField{QLatin1String("UserCreated"), &R::UserCreated, Together::Created, Written::Insert},
    GoodField{QLatin1String("ModifiedTime"), &R::ModifiedTime, Together::Modified, Written::Update},
    GoodField{QLatin1String("ModifiedDate"), &R::ModifiedDate, Together::Modified, Written::Update},
    GoodField{QLatin1String("UserModified"), &R::UserModified, Together::Modified, Written::Update},
    GoodField{QLatin1String("VoucherCode"), &R::VoucherCode, Together::Alone, Written::Update},
    GoodField{QLatin1String("FeaturesDetail"), &R::FeaturesDetail},
    GoodField{QLatin1String("ConsumerPrice"), &R::ConsumerPrice},
    GoodField{QLatin1String("DaraiGoodType"), &R::DaraiGoodType},
};

QVariant AsVariant(const QString &text)
{
    return text;
}

QVariant AsVariant(host::Quantity quantity)
{
    return host::QuantityToText(quantity);
}

QVariant AsVariant(bool flag)
{
    return flag;
}

QVariant AsVariant(int number)
{
    return number;
}

void Assign(QString &member, const QVariant &value)
{
    member = value.toString();
}

void Assign(host::Quantity &member, const QVariant &value)
{
    member = host::QuantityFromText(value.toString());
}

void Assign(bool &member, const QVariant &value)
{
    member = value.toBool();
}

void Assign(int &member, const QVariant &value)
{
    member = value.toInt();
}

void Assign(qint16 &member, const QVariant &value)
{
    member = static_cast<qint16>(value.toInt());
}

} // namespace

QVariant GoodField::Get(const TGoodInfoRec &rec) const
{
    return std::visit(
        [&](auto pointer) {
            const auto &value = rec.*pointer;
            const bool nothing = value == std::decay_t<decltype(value)>();
            return empty == Empty::AsNull && nothing ? QVariant() : AsVariant(value);
        },
        member);
}

void GoodField::Set(TGoodInfoRec &rec, const QVariant &value) const
{
    std::visit([&](auto pointer) { Assign(rec.*pointer, value); }, member);
}

std::span<const GoodField> GoodFields()
{
    return Fields;
}

bool Differs(const GoodField &field, const TGoodInfoRec &one, const TGoodInfoRec &other)
{
    return std::any_of(Fields.begin(), Fields.end(), [&](const GoodField &each) {
        const bool belongs =
            each.column == field.column || (field.together != Together::Alone && each.together == field.together);
        return belongs && each.Get(one) != each.Get(other);
    });
}

void KeepUntouched(TGoodInfoRec &rec, const TGoodInfoRec &untouched, const TGoodInfoRec &stored)
{
    const TGoodInfoRec entered = rec;
    for (const GoodField &field : Fields) {
        if (!Differs(field, entered, untouched)) {
            field.Set(rec, field.Get(stored));
        }
    }
}

} // namespace goods
