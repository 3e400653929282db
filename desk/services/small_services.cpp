#include "desk/services/small_services.h"

#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/transaction.h"
#include "host/look/theme.h"

#include <QCalendar>
#include <QDateTime>

#include <memory>
#include <zint.h>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int Ean8Digits = 7; // without the check digit
constexpr int Ean13Digits = 12;

} // namespace

QString Barcodes::Complete_Barcode(const QString &digits)
{
    const bool fits = digits.size() == Ean8Digits || digits.size() == Ean13Digits;
    const auto plain = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (!fits || !std::all_of(digits.cbegin(), digits.cend(), plain))
        return {};
    const std::unique_ptr<zint_symbol, void (*)(zint_symbol *)> symbol(ZBarcode_Create(), ZBarcode_Delete);
    if (!symbol)
        return {};
    symbol->symbology = BARCODE_EANX;
    const QByteArray text = digits.toLatin1();
    const auto *bytes = reinterpret_cast<const unsigned char *>(text.constData());
    if (ZBarcode_Encode(symbol.get(), bytes, static_cast<int>(text.size())) >= ZINT_ERROR)
        return {};
    return QString::fromLatin1(reinterpret_cast<const char *>(symbol->text));
}

QString Clock::NowTime()
{
    return QTime::currentTime().toString(u"HH:mm:ss");
}

QString Clock::NowDate()
{
    return QDate::currentDate().toString(u"yyyy/MM/dd");
}

QString Clock::NowShamsiDate()
{
    return QDate::currentDate().toString(u"yyyy/MM/dd", QCalendar(QCalendar::System::Jalali));
}

QList<host::Entity> Finance::Fill_FinanceGoodTypes()
{
    QList<host::Entity> types;
    for (host::Query query(m_connection, u"SELECT Code, Name FROM FinanceGoodTypes ORDER BY Code"_s); !query.Eof();
         query.Next())
        types << host::Entity{query.Int(u"Code"), query.Text(u"Name")};
    return types;
}

int Numbers::Save_Global_ID(host::TSoftwarePart part)
{
    const QString mode = QString::number(static_cast<int>(part));
    host::Transaction transaction(m_connection);
    const int number =
        host::Scalar(m_connection, u"SELECT ISNULL(MAX(Code), 0) + 1 FROM Global_ID WHERE Mode = "_s + mode).toInt();
    host::Exec(m_connection, u"INSERT INTO Global_ID (Mode, Code) VALUES (%1, %2)"_s.arg(mode).arg(number));
    transaction.Commit();
    return number;
}

void Numbers::Save_Global_ID(host::TSoftwarePart part, int number)
{
    host::Run(
        m_connection,
        u"INSERT INTO Global_ID (Mode, Code) SELECT %1, %2 WHERE NOT EXISTS (SELECT 1 FROM Global_ID WHERE Mode = "
        "%1 AND Code = %2)"_s.arg(static_cast<int>(part))
            .arg(number));
}

void Numbers::Delete_Global_ID(host::TSoftwarePart part, int number)
{
    host::Run(m_connection,
              u"DELETE FROM Global_ID WHERE Mode = %1 AND Code = %2"_s.arg(static_cast<int>(part)).arg(number));
}

bool Scales::Enabled() const
{
    if (!m_connection.isOpen())
        return false;
    try {
        return host::Exists(m_connection, u"SELECT TOP 1 Code FROM Items"_s);
    } catch (const host::DatabaseError &error) {
        if (error.NativeCode() == u"208"_s) // a shop without scales has no such table
            return false;
        throw;
    }
}

QColor Theme::CaptionColor() const
{
    return host::theme::Bar();
}

QFont Theme::TitleFont() const
{
    return host::theme::TitleFont();
}

} // namespace desk
