#include "detailtypes/detail_type_choice.h"

#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace detail_types {

namespace {

/// Whether one kind of types that an owner takes once is there twice.
template <typename Check> bool Twice(const Check &moreThan, const QString &previous, const QString &picked)
{
    return (moreThan(previous, 0) && moreThan(picked, 0)) || moreThan(picked, 1);
}

QString Owner(bool inList)
{
    return inList ? u"کاربر گرامی در یک لیست"_s : u"کاربر گرامی برای یک کالا"_s;
}

} // namespace

QString TwoIdentifying(bool inList)
{
    return Owner(inList) +
           u" امکان وجود چند جزییات بارکدی و یا سریالی و یا وجود از هر دونوع همزمان امکان پذیر نمی باشد"_s;
}

std::optional<QString> TooManyTypes(int previous, int picked)
{
    if (previous == 0 && picked > Most)
        return u"کاربر گرامی امکان انتخاب حداکثر 5 مورد امکان پذیر می باشد"_s;
    if (previous > 0 && previous + picked > Most)
        return u"کاربر گرامی تعداد موارد انتخاب شده قبلی "_s + QString::number(previous) +
               u" مورد و تعداد موارد انتخاب شده فعلی "_s + QString::number(picked) +
               u" مورد می باشد که جمعا از 5 مورد بیشتر می شوند و حداکثر تعداد موارد لیست انتخابی 5 مورد می تواند باشد"_s;
    return {};
}

std::optional<QString> TooManyMembers(int previous, int members)
{
    if (previous > 0 && members + previous > Most)
        return u"کاربر گرامی تعداد موارد انتخاب شده قبلی "_s + QString::number(previous) +
               u" مورد و تعداد موارد لیست انتخاب شده فعلی "_s + QString::number(members) +
               u" مورد می باشد که جمعا از 5 مورد بیشتر می شوند و حداکثر تعداد موارد انتخابی 5 مورد می تواند باشد"_s;
    return {};
}

std::optional<QString> NotTogether(TDetailTypes_DM &data, const QString &previous, const QString &picked, bool inList)
{
    const auto identifying = [&data](const QString &codes, int limit) {
        return data.CheckDetailTypeCodes_SerialAndBarcode(codes, limit);
    };
    const auto reminding = [&data](const QString &codes, int limit) {
        return data.CheckDetailTypeCodes_DateTypeForDateAllarm(codes, limit);
    };
    if (Twice(identifying, previous, picked))
        return TwoIdentifying(inList);
    if (Twice(reminding, previous, picked))
        return Owner(inList) + u" امکان انتخاب چند جزییات تاریخی دارای تیک یادآوری سررسید تاریخ امکان پذیر نمی باشد"_s;
    return {};
}

std::optional<QString> AddMembers(TDetailTypes_DM &data, int category, const QString &picked)
{
    host::Transaction transaction(data.Connection());
    data.DetailTypes_SelectedList_Lock(category);
    QString members;
    const bool any = data.DetailTypes_SelectedList_GetCode(category, members);
    const QList<int> present = any ? host::Codes(members) : QList<int>();
    QStringList added;
    const QList<int> codes = host::Codes(picked);
    for (const int code : codes)
        if (!present.contains(code))
            added += QString::number(code);
    if (auto refusal = TooManyTypes(static_cast<int>(present.size()), static_cast<int>(added.size())))
        return refusal;
    if (auto refusal = NotTogether(data, members, added.join(u','), true))
        return refusal;
    data.DetailTypes_SelectedList_InsertDetail(picked, category);
    transaction.Commit();
    return {};
}

} // namespace detail_types
