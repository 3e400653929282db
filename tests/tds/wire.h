// Messages of the tabular data stream: the packets of a socket put together, and replies cut into packets.
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace tds {

enum class MessageType : quint8 {
    Batch = 1,
    Call = 3,
    Reply = 4,
    Attention = 6,
    Transaction = 14,
    Login = 16,
    PreLogin = 18,
};

struct Message
{
    MessageType type = MessageType::Batch;
    QByteArray body;
};

/** The client is gone, or says what no client says. */
class Lost : public std::exception
{};

/** Owns the socket. A reply is put together byte by byte and leaves in packets; finish() sends the last one. */
class Wire
{
public:
    explicit Wire(int socket) : m_socket(socket) {}
    ~Wire();
    Wire(const Wire &) = delete;
    Wire &operator=(const Wire &) = delete;

    /** Waits for a whole message. */
    Message receive();

    /** What a packet may hold at most, its eight bytes of header included. */
    void setPacketSize(int size) { m_packetSize = size; }
    /** `Number` little end first. */
    template <class Number> void put(Number number) { append(&number, sizeof number); }
    void put(const QByteArray &bytes) { append(bytes.constData(), bytes.size()); }
    void put(const QString &text) { append(text.utf16(), text.size() * 2); }
    /** A length of one byte in characters, then the text. */
    void putShort(const QString &text);
    void finish();

    /** Something has come from the client while a reply was on its way: it wants no more of it. */
    bool interrupted() const { return m_interrupted; }

private:
    void append(const void *bytes, qsizetype size);
    void sendPacket(qsizetype size, bool last);
    QByteArray read(qsizetype size);

    static constexpr int HeaderSize = 8;

    const int m_socket;
    int m_packetSize = 4096;
    quint8 m_packetNumber = 0;
    QByteArray m_reply;
    bool m_interrupted = false;
};

} // namespace tds
