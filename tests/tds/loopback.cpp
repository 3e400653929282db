#include "tests/tds/loopback.h"

#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>

namespace tds {

namespace {

void Check(int result, const char *what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
}

} // namespace

int Listen(int &port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    Check(socket, "socket");
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    Check(::bind(socket, reinterpret_cast<sockaddr *>(&address), size), "bind");
    Check(::listen(socket, SOMAXCONN), "listen");
    Check(::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size), "getsockname");
    port = ntohs(address.sin_port);
    return socket;
}

} // namespace tds
