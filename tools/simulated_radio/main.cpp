// A radio server to point the program at when no radio is at hand: every line that passes is
// printed, or goes to a log that keeps the latest.
// Usage: veloran-simulated-radio [port] [--classic] [--log FILE]

#include <fmt/format.h>

#include <QCoreApplication>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>

#include "base/text.h"
#include "servers/log_file.h"
#include "servers/simulated_radio.h"

namespace veloran {
namespace {

struct Options {
    std::uint16_t port = 4532;
    CapsAnswer caps = CapsAnswer::satProtoV1;
    QString log;  // empty: lines are printed
};

std::optional<Options> readOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const auto number = parseInt64(argument);
        if (argument == "--classic") {
            options.caps = CapsAnswer::notImplemented;
        } else if (argument == "--log" && i + 1 < argc) {
            options.log = QFile::decodeName(argv[++i]);
        } else if (number && *number >= 0 && *number <= 65535) {
            options.port = static_cast<std::uint16_t>(*number);
        } else {
            return std::nullopt;
        }
    }
    return options;
}

void print(std::string_view line) {
    fmt::print("{}\n", line);
    std::fflush(stdout);
}

int serve(const Options& options) {
    LogFile log(options.log);
    if (!options.log.isEmpty() && !log.open()) {
        fmt::print(stderr, "{} cannot be written.\n", options.log.toStdString());
        return 1;
    }
    SimulatedRadio radio(options.caps);
    radio.onLine = [&log](const RadioLogLine& line) {
        if (log.isOpen()) {
            log.write(logText(line));
        } else {
            print(logText(line));
        }
    };
    if (!radio.start(options.port)) {
        fmt::print(stderr, "Port {} of 127.0.0.1 cannot be had.\n", options.port);
        return 1;
    }
    print(fmt::format("Listening on 127.0.0.1:{}, {}.", radio.port(),
                      options.caps == CapsAnswer::satProtoV1 ? "SAT_PROTO v1" : "classic"));
    return QCoreApplication::exec();
}

}  // namespace
}  // namespace veloran

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const auto options = veloran::readOptions(argc, argv);
    if (!options) {
        fmt::print(stderr, "usage: veloran-simulated-radio [port] [--classic] [--log FILE]\n");
        return 2;
    }
    return veloran::serve(*options);
}
