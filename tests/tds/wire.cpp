#include "tests/tds/wire.h"

#include <QtEndian>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tds {

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "numbers are written as they lie in memory");

Wire::~Wire()
{
    ::close(m_socket);
}

QByteArray Wire::read(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype done = 0; done < size;) {
        const ssize_t count = ::recv(m_socket, bytes.data() + done, size_t(size - done), 0);
        if (count <= 0)
            throw Lost();
        done += count;
    }
    return bytes;
}

Message Wire::receive()
{
    Message message;
    for (bool last = false; !last;) {
        const QByteArray header = read(HeaderSize);
        message.type = MessageType(header[0]);
        last = header[1] & 1;
        const auto size = qFromBigEndian<quint16>(header.constData() + 2);
        if (size < HeaderSize)
            throw Lost();
        message.body += read(size - HeaderSize);
    }
    m_interrupted = false;
    return message;
}

void Wire::putShort(const QString &text)
{
    const QString kept = text.left(255);
    put(quint8(kept.size()));
    put(kept);
}

void Wire::append(const void *bytes, qsizetype size)
{
    m_reply.append(static_cast<const char *>(bytes), size);
    const qsizetype room = m_packetSize - HeaderSize;
    while (m_reply.size() > room)
        sendPacket(room, false);
}

void Wire::finish()
{
    sendPacket(m_reply.size(), true);
    m_packetNumber = 0;
}

void Wire::sendPacket(qsizetype size, bool last)
{
    QByteArray packet(HeaderSize, '\0');
    packet[0] = char(MessageType::Reply);
    packet[1] = char(last);
    qToBigEndian(quint16(size + HeaderSize), packet.data() + 2);
    packet[6] = char(++m_packetNumber);
    packet += m_reply.left(size);
    m_reply.remove(0, size);
    for (qsizetype done = 0; done < packet.size();) {
        const ssize_t count = ::send(m_socket, packet.constData() + done, size_t(packet.size() - done), MSG_NOSIGNAL);
        if (count <= 0)
            throw Lost();
        done += count;
    }
    if (!last) {
        pollfd waiting{m_socket, POLLIN, 0};
        m_interrupted = m_interrupted || ::poll(&waiting, 1, 0) > 0;
    }
}

} // namespace tds
