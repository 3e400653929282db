#include "bench/relay.h"

#include "tests/tds/loopback.h"

#include <array>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace bench {

namespace {

/// What is small goes at once: a delay is the relay's to make.
void SendAtOnce(int socket)
{
    const int now = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &now, sizeof now);
}

/// -1 when nobody answers there.
int Connect(const std::string &host, const std::string &port)
{
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo *places = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &wanted, &places) != 0)
        return -1;
    int server = -1;
    for (const addrinfo *place = places; place && server < 0; place = place->ai_next) {
        server = ::socket(place->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (server >= 0 && ::connect(server, place->ai_addr, place->ai_addrlen) < 0) {
            ::close(server);
            server = -1;
        }
    }
    ::freeaddrinfo(places);
    return server;
}

bool SendAll(int socket, const char *bytes, ssize_t size)
{
    for (ssize_t done = 0; done < size;) {
        const ssize_t count = ::send(socket, bytes + done, static_cast<std::size_t>(size - done), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

} // namespace

Relay::Relay(std::string host, std::string port)
{
    m_state->host = std::move(host);
    m_state->port = std::move(port);
    m_socket = tds::Listen(m_port);
    std::thread([socket = m_socket, state = m_state] {
        for (int client = 0; (client = ::accept4(socket, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;)
            std::thread([client, state] { Serve(client, *state); }).detach();
    }).detach();
}

Relay::~Relay()
{
    ::shutdown(m_socket, SHUT_RDWR); // who waits for clients leaves
    ::close(m_socket);
}

void Relay::Serve(int client, State &state)
{
    const int server = Connect(state.host, state.port);
    if (server >= 0) {
        SendAtOnce(client);
        SendAtOnce(server);
        Carry(client, server, state);
        ::close(server);
    }
    ::close(client);
}

void Relay::Carry(int client, int server, State &state)
{
    std::array<char, 65536> bytes;
    std::array<pollfd, 2> ends{pollfd{client, POLLIN, 0}, pollfd{server, POLLIN, 0}};
    bool asking = false; // the last word was the client's
    while (::poll(ends.data(), ends.size(), -1) > 0) {
        for (const pollfd &end : ends) {
            if (end.revents == 0)
                continue;
            const ssize_t count = ::recv(end.fd, bytes.data(), bytes.size(), 0);
            if (count <= 0)
                return;
            const bool fromClient = end.fd == client;
            if (fromClient && !asking) {
                ++state.trips;
                std::this_thread::sleep_for(std::chrono::microseconds(state.delay));
            }
            asking = fromClient;
            if (!SendAll(fromClient ? server : client, bytes.data(), count))
                return;
        }
    }
}

} // namespace bench
