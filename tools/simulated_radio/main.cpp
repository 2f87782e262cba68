// A radio server to point the program at when no radio is at hand: every line that passes is
// printed. Usage: veloran-simulated-radio [port] [--classic]

#include <fmt/format.h>

#include <QCoreApplication>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "base/text.h"
#include "servers/simulated_radio.h"

int main(int argc, char** argv) {
    using namespace veloran;
    QCoreApplication app(argc, argv);
    std::int64_t port = 4532;
    auto caps = CapsAnswer::satProtoV1;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const auto number = parseInt64(argument);
        if (argument == "--classic") {
            caps = CapsAnswer::notImplemented;
        } else if (number && *number >= 0 && *number <= 65535) {
            port = *number;
        } else {
            fmt::print(stderr, "usage: veloran-simulated-radio [port] [--classic]\n");
            return 2;
        }
    }

    SimulatedRadio radio(caps);
    radio.onLine = [](const RadioLogLine& line) {
        fmt::print("{}\n", logText(line));
        std::fflush(stdout);
    };
    if (!radio.start(static_cast<std::uint16_t>(port))) {
        fmt::print(stderr, "Port {} of 127.0.0.1 cannot be had.\n", port);
        return 1;
    }
    fmt::print("Listening on 127.0.0.1:{}, {}.\n", radio.port(),
               caps == CapsAnswer::satProtoV1 ? "SAT_PROTO v1" : "classic");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
