#include "ui/life/life_texts.h"

#include <fmt/format.h>

#include "ui/formats.h"

namespace veloran {

namespace {

std::string sessionText(const Duty::Session& session) {
    if (!session.ends) return fmt::format("Tracking {}", session.satellite);
    return fmt::format("Tracking {} until {}", session.satellite, listTime(*session.ends));
}

std::string passesText(std::size_t count) {
    return count == 1 ? "1 queued pass" : fmt::format("{} queued passes", count);
}

}  // namespace

std::string dutyText(const Duty& duty) {
    if (duty.session) return sessionText(*duty.session);
    if (duty.passesAhead == 0) return "Nothing to track";
    if (!duty.next) return fmt::format("Waiting for {}", passesText(duty.passesAhead));
    const std::string next =
        fmt::format("Next pass: {} at {}", duty.next->satName, listTime(duty.next->riseTime));
    if (duty.passesAhead == 1) return next;
    return fmt::format("{}, then {} more", next, duty.passesAhead - 1);
}

std::optional<std::string> stayAwakeReason(const Duty& duty) {
    if (duty.session) return sessionText(*duty.session);
    if (duty.passesAhead == 0) return std::nullopt;
    if (!duty.next) return fmt::format("Waiting for {}", passesText(duty.passesAhead));
    return fmt::format("Waiting for the pass of {} at {}", duty.next->satName,
                       listTime(duty.next->riseTime));
}

std::string backgroundTitle(const Duty& duty) {
    return "Veloran goes on: " + dutyText(duty);
}

std::string backgroundText(bool hasTray) {
    const std::string when = " It ends by itself when nothing is left to track.";
    if (hasTray) return "Its symbol in the tray shows the window again." + when;
    return "Start Veloran again to see its window." + when;
}

std::string quitMessage(const Duty& duty) {
    std::string message;
    if (duty.session) message = fmt::format("{} is being tracked.", duty.session->satellite);
    if (duty.passesAhead > 0) {
        if (!message.empty()) message += ' ';
        message += fmt::format("{} will not be tracked.", passesText(duty.passesAhead));
    }
    if (duty.next) {
        message += fmt::format(" The next is {} at {}.", duty.next->satName,
                               listTime(duty.next->riseTime));
    }
    return message;
}

}  // namespace veloran
