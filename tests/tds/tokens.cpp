#include "tests/tds/tokens.h"

#include <QtEndian>

#include <iconv.h>

using namespace Qt::StringLiterals;

namespace tds {

namespace {

enum Token : quint8 {
    ReturnStatus = 0x79,
    ErrorToken = 0xAA,
    InfoToken = 0xAB,
    LoginAck = 0xAD,
    EnvironmentChange = 0xE3,
};

constexpr quint32 Persian = 0x0429;
constexpr quint32 CaseAccentKanaWidth = 0x0F; // ignored
constexpr quint32 Utf8Flag = 0x40;
constexpr quint32 CollationVersion100 = 2;

/** A change whose values are texts. */
void PutTextChange(Wire &wire, quint8 type, const QString &to, const QString &from)
{
    wire.put(EnvironmentChange);
    wire.put(quint16(3 + 2 * (to.size() + from.size())));
    wire.put(type);
    wire.putShort(to);
    wire.putShort(from);
}

} // namespace

Collation::Collation(const QString &name) : isUtf8(name.endsWith(QLatin1String("UTF8"), Qt::CaseInsensitive))
{}

QByteArray Collation::bytes() const
{
    const quint32 flags = CaseAccentKanaWidth | (isUtf8 ? Utf8Flag : 0);
    const quint32 packed = Persian | flags << 20 | CollationVersion100 << 28;
    QByteArray bytes(5, '\0'); // the last is the sort order of collations older than Windows' own
    qToLittleEndian(packed, bytes.data());
    return bytes;
}

QByteArray Collation::encoded(std::string_view utf8) const
{
    if (isUtf8)
        return {utf8.data(), qsizetype(utf8.size())};
    const iconv_t converter = iconv_open("CP1256", "UTF-8");
    QByteArray all;
    for (const char32_t letter : QString::fromUtf8(utf8.data(), qsizetype(utf8.size())).toUcs4()) {
        QByteArray in = QString::fromUcs4(&letter, 1).toUtf8();
        char out = '?';
        char *from = in.data();
        char *to = &out;
        auto left = size_t(in.size());
        size_t room = 1;
        if (iconv(converter, &from, &left, &to, &room) == size_t(-1))
            out = '?';
        all += out;
    }
    iconv_close(converter);
    return all;
}

void PutDone(Wire &wire, int status, qint64 rows, DoneKind kind)
{
    constexpr quint16 Select = 0xC1;
    wire.put(quint8(kind));
    wire.put(quint16(status));
    wire.put(status & DoneCount ? Select : quint16(0));
    wire.put(quint64(rows));
}

void PutMessage(Wire &wire, int number, int severity, int state, int line, const QString &text)
{
    const QString server = u"tds-server"_s;
    const QString shown = text.left(4000);
    wire.put(severity < 11 ? InfoToken : ErrorToken);
    wire.put(quint16(4 + 1 + 1 + 2 + 2 * shown.size() + 1 + 2 * server.size() + 1 + 4));
    wire.put(qint32(number));
    wire.put(quint8(state));
    wire.put(quint8(severity));
    wire.put(quint16(shown.size()));
    wire.put(shown);
    wire.putShort(server);
    wire.putShort(QString());
    wire.put(qint32(line));
}

void PutReturnStatus(Wire &wire, int value)
{
    wire.put(ReturnStatus);
    wire.put(qint32(value));
}

void PutLoginAcknowledgement(Wire &wire, quint32 version)
{
    const QString program = u"tds-server"_s;
    wire.put(LoginAck);
    wire.put(quint16(1 + 4 + 1 + 2 * program.size() + 4));
    wire.put(quint8(1));
    wire.put(qToBigEndian(version));
    wire.putShort(program);
    wire.put(qToBigEndian(quint32(13) << 24));
}

void PutDatabaseChange(Wire &wire, const QString &from, const QString &to)
{
    PutTextChange(wire, 1, to, from);
}

void PutPacketSizeChange(Wire &wire, int size)
{
    PutTextChange(wire, 4, QString::number(size), u"4096"_s);
}

void PutCollationChange(Wire &wire, const Collation &collation)
{
    wire.put(EnvironmentChange);
    wire.put(quint16(1 + 1 + 5 + 1));
    wire.put(quint8(7));
    wire.put(quint8(5));
    wire.put(collation.bytes());
    wire.put(quint8(0));
}

void PutTransactionChange(Wire &wire, quint8 type, quint64 transaction)
{
    const bool begun = type == 8;
    wire.put(EnvironmentChange);
    wire.put(quint16(1 + 1 + 8 + 1));
    wire.put(type);
    if (!begun)
        wire.put(quint8(0));
    wire.put(quint8(8));
    wire.put(transaction);
    if (begun)
        wire.put(quint8(0));
}

} // namespace tds
