#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace veloran {

/// Unpacks gzip (RFC 1952, one or several members) piece by piece as it comes in.
class Gunzip {
  public:
    /// The text may not grow beyond `largest` bytes.
    explicit Gunzip(std::size_t largest);
    ~Gunzip();
    Gunzip(Gunzip&&) noexcept;
    Gunzip& operator=(Gunzip&&) noexcept;

    /// False, then and from then on, for what is damaged or grows too large.
    bool feed(std::string_view packed);
    /// The text, if all of it has come and its checksums are right.
    std::optional<std::string> finish();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace veloran
