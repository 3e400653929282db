#include "host/data/odbc_text.h"

#include <QLibrary>
#include <QSqlDriver>
#include <QSqlResult>

#include <array>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr short WideCharacters = -8; // SQL_C_WCHAR
constexpr short Success = 0;
constexpr short SuccessWithInfo = 1;
constexpr qintptr NullData = -1;

/// SQLGetData of the driver manager that the Qt driver has loaded.
using GetData = short (*)(void *statement, unsigned short column, short type, void *value, qintptr size,
                          qintptr *length);

GetData Resolved()
{
#ifdef Q_OS_WIN
    static const auto function = reinterpret_cast<GetData>(QLibrary::resolve(u"odbc32"_s, "SQLGetData"));
#else
    static const auto function = reinterpret_cast<GetData>(QLibrary::resolve(u"odbc"_s, 2, "SQLGetData"));
#endif
    return function;
}

} // namespace

OdbcText::OdbcText(const QSqlQuery &query)
{
    if (!query.driver() || !query.result() || query.driver()->metaObject()->className() != QByteArray("QODBCDriver")) {
        return;
    }
    const QVariant handle = query.result()->handle();
    if (handle.metaType() == QMetaType::fromType<void *>() && Resolved()) {
        m_statement = *static_cast<void *const *>(handle.constData());
    }
}

QVariant OdbcText::Read(int column) const
{
    std::array<char16_t, 2048> piece;
    QString text;
    for (;;) {
        qintptr length = 0;
        const short outcome = Resolved()(m_statement, static_cast<unsigned short>(column + 1), WideCharacters,
                                         piece.data(), sizeof piece, &length);
        if (outcome != Success && outcome != SuccessWithInfo) {
            return text;
        }
        if (length == NullData) {
            return {};
        }
        // A piece that was cut ends with a zero; its length is that of everything still to come.
        const bool cut = outcome == SuccessWithInfo && (length < 0 || length >= qintptr(sizeof piece));
        const auto letters = cut ? qsizetype(piece.size() - 1) : qsizetype(length / qintptr(sizeof(char16_t)));
        text += QStringView(piece.data(), letters);
        if (!cut) {
            return text;
        }
    }
}

} // namespace host
