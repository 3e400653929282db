#include "desk/services/settings.h"

#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <QMap>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::NQuotedStr;
using host::TSettingRecord;

QString BarcodeName(std::size_t index)
{
    return u"ReservedBarcode%1"_s.arg(index + 1);
}

} // namespace

const QList<SettingSwitch> &SettingSwitches()
{
    static const QList<SettingSwitch> all{
        {"TwoUnitGoods", &TSettingRecord::TwoUnitGoods, u"واحدها",
         u"کالاها می‌توانند واحد دوم داشته باشند"},
        {"TwoUnitVariableRatio", &TSettingRecord::TwoUnitVariableRatio, u"واحدها",
         u"نسبت دو واحد از قلمی به قلم دیگر فرق می‌کند"},
        {"IntegerUnits", &TSettingRecord::IntegerUnits, u"واحدها", u"مقدار واحد دوم عدد صحیح است"},
        {"SquareMetreGoods", &TSettingRecord::SquareMetreGoods, u"واحدها", u"کالاهای متر مربعی"},
        {"GoodDetails", &TSettingRecord::GoodDetails, u"جزئیات کالا", u"نگهداری جزئیات کالا (سریال، رنگ و …)"},
        {"GoodDetailsForOpening", &TSettingRecord::GoodDetailsForOpening, u"جزئیات کالا",
         u"ورود جزئیات برای موجودی اول دوره الزامی است"},
        {"TakeOnlyDetail", &TSettingRecord::TakeOnlyDetail, u"جزئیات کالا",
         u"در خروج، موجودی تنها سریال پیدا شده پیشنهاد شود"},
        {"DivisionWaste", &TSettingRecord::DivisionWaste, u"جزئیات کالا", u"در تقسیم جزئیات، ضایعات علامت زده شود"},
        {"StockOnGoodsList", &TSettingRecord::StockOnGoodsList, u"موجودی", u"نمایش موجودی در لیست کالاها"},
        {"ControlNegativeStock", &TSettingRecord::ControlNegativeStock, u"موجودی", u"جلوگیری از منفی شدن موجودی"},
        {"RowDiscounts", &TSettingRecord::RowDiscounts, u"قیمت و مالیات", u"تخفیف برای هر سطر سند"},
        {"ValueAddedTax", &TSettingRecord::ValueAddedTax, u"قیمت و مالیات", u"عوارض و مالیات بر ارزش افزوده"},
        {"FinalPrices", &TSettingRecord::FinalPrices, u"قیمت و مالیات",
         u"قیمت‌ها می‌توانند شامل عوارض و مالیات باشند"},
        {"AutoKeyboard", &TSettingRecord::AutoKeyboard, u"صفحه‌کلید",
         u"در فیلدهای بارکد و سریال، صفحه‌کلید انگلیسی شود"},
    };
    return all;
}

Settings::Settings(const QSqlDatabase &connection) : m_connection(connection)
{
    Reload();
}

bool Settings::SignIn(int user)
{
    const host::Query query(m_connection, u"SELECT Code, Name, ManageType FROM Users WHERE Code = %1"_s.arg(user));
    if (query.IsEmpty())
        return false;
    m_states.clear();
    m_user = {query.Int(u"Code"), query.Text(u"Name"), query.Int(u"ManageType")};
    return true;
}

void Settings::Reload()
{
    QMap<QString, QString> values;
    for (host::Query query(m_connection, u"SELECT Name, Value FROM Settings"_s); !query.Eof(); query.Next())
        values.insert(query.Text(u"Name"), query.Text(u"Value"));
    TSettingRecord record;
    for (const SettingSwitch &each : SettingSwitches()) {
        const auto found = values.constFind(QString::fromLatin1(each.name));
        if (found != values.constEnd())
            record.*each.member = *found == u"1";
    }
    record.SquareMetreUnit = values.value(u"SquareMetreUnit"_s).toInt();
    if (const int length = values.value(u"GoodCodeLength"_s).toInt())
        record.GoodCodeLength = std::clamp(length, LeastCodeLength, GreatestCodeLength);
    for (std::size_t i = 0; i < record.ReservedBarcodes.size(); ++i)
        record.ReservedBarcodes[i] = values.value(BarcodeName(i));
    m_record = record;
}

void Settings::Save(const TSettingRecord &record)
{
    QMap<QString, QString> values;
    for (const SettingSwitch &each : SettingSwitches())
        values.insert(QString::fromLatin1(each.name), record.*each.member ? u"1"_s : u"0"_s);
    values.insert(u"SquareMetreUnit"_s, QString::number(record.SquareMetreUnit));
    values.insert(u"GoodCodeLength"_s, QString::number(record.GoodCodeLength));
    for (std::size_t i = 0; i < record.ReservedBarcodes.size(); ++i)
        values.insert(BarcodeName(i), record.ReservedBarcodes[i]);

    host::Transaction transaction(m_connection);
    for (auto each = values.cbegin(); each != values.cend(); ++each) {
        const QString name = host::QuotedStr(each.key());
        const QString value = NQuotedStr(each.value());
        if (!host::Exec(m_connection, u"UPDATE Settings SET Value = "_s + value + u" WHERE Name = "_s + name))
            host::Exec(m_connection, u"INSERT INTO Settings (Name, Value) VALUES ("_s + name + u", "_s + value + u')');
    }
    transaction.Commit();
    m_record = record;
}

QByteArray Settings::LoadState(const QString &screen)
{
    if (const auto known = m_states.constFind(screen); known != m_states.constEnd())
        return *known;
    const QVariant layout =
        host::Scalar(m_connection, u"SELECT Layout FROM ScreenLayouts WHERE UserCode = "_s +
                                       QString::number(m_user.Code) + u" AND Screen = "_s + NQuotedStr(screen));
    return m_states[screen] = QByteArray::fromBase64(layout.toString().toLatin1());
}

void Settings::SaveState(const QString &screen, const QByteArray &state)
{
    const QString layout = NQuotedStr(QString::fromLatin1(state.toBase64()));
    const QString user = QString::number(m_user.Code);
    const QString name = NQuotedStr(screen);
    host::Transaction transaction(m_connection);
    if (!host::Exec(m_connection, u"UPDATE ScreenLayouts SET Layout = "_s + layout + u" WHERE UserCode = "_s + user +
                                      u" AND Screen = "_s + name))
        host::Exec(m_connection, u"INSERT INTO ScreenLayouts (UserCode, Screen, Layout) VALUES ("_s + user + u", "_s +
                                     name + u", "_s + layout + u')');
    transaction.Commit();
    m_states[screen] = state;
}

} // namespace desk
