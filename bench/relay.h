#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <string>

namespace bench {

/// A way to a server that is as long as one likes.
///
/// Passes bytes between clients and a server and holds up each request, which is where the client speaks after the
/// server: once a round trip, however many packets the request and its answer have. Knows nothing of what is said, so
/// that any server may stand behind it. The answer itself flows unhindered: width of the line is not imitated.
class Relay
{
public:
    /// Listens on this machine only, on a port of the system's choice. Throws std::system_error.
    Relay(std::string host, std::string port);
    ~Relay();
    Relay(const Relay &) = delete;
    Relay &operator=(const Relay &) = delete;

    int Port() const { return m_port; }
    /// For requests from now on; 0 at first.
    void SetDelay(std::chrono::microseconds delay) { m_state->delay = delay.count(); }
    /// Requests so far, of all clients.
    long RoundTrips() const { return m_state->trips; }

private:
    /// Outlives the relay as long as a client is served.
    struct State
    {
        std::string host;
        std::string port;
        std::atomic<long long> delay = 0; ///< microseconds
        std::atomic<long> trips = 0;
    };
    static void Serve(int client, State &state);
    static void Carry(int client, int server, State &state);

    std::shared_ptr<State> m_state = std::make_shared<State>();
    int m_socket = -1;
    int m_port = 0;
};

} // namespace bench
