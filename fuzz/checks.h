#pragma once

#include <span>
#include <string_view>

/// What has to hold for any bytes at each door to the outside. A check returns, or ends the
/// program.
namespace veloran::fuzz {

void checkElementText(std::string_view bytes);
void checkTwoLines(std::string_view bytes);
void checkOmmJson(std::string_view bytes);
void checkImportText(std::string_view bytes);
void checkTransmitterFile(std::string_view bytes);
void checkServiceAnswer(std::string_view bytes);
void checkTransmitterCache(std::string_view bytes);
void checkRigBytes(std::string_view bytes);
void checkStoredSettings(std::string_view bytes);
void checkLocators(std::string_view bytes);
void checkTypedNumbers(std::string_view bytes);
void checkGunzip(std::string_view bytes);

struct Check {
    std::string_view name;  ///< of its file in targets/ and of its directories of inputs
    void (*run)(std::string_view bytes);
};
std::span<const Check> checks();

}  // namespace veloran::fuzz
