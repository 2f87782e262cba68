#pragma once

#include <functional>
#include <string>

namespace veloran {

/// Short messages that the desktop shows beside all windows, one at a time. Where the desktop has
/// no such thing, nothing happens. Main thread only.
class Notices {
  public:
    struct Notice {
        std::string title;
        std::string text;
    };

    virtual ~Notices() = default;
    /// Takes the place of an earlier notice. `onChosen` is called when the user clicks it.
    virtual void show(const Notice& notice, std::function<void()> onChosen) = 0;
    /// Takes the notice away.
    virtual void withdraw() = 0;
};

}  // namespace veloran
