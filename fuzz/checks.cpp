#include "checks.h"

namespace veloran::fuzz {

std::span<const Check> checks() {
    static constexpr Check kChecks[] = {{"element_text", checkElementText},
                                        {"two_lines", checkTwoLines},
                                        {"omm_json", checkOmmJson},
                                        {"import_text", checkImportText},
                                        {"transmitter_file", checkTransmitterFile},
                                        {"service_answer", checkServiceAnswer},
                                        {"transmitter_cache", checkTransmitterCache},
                                        {"rig_bytes", checkRigBytes},
                                        {"stored_settings", checkStoredSettings},
                                        {"locators", checkLocators},
                                        {"typed_numbers", checkTypedNumbers},
                                        {"gunzip", checkGunzip}};
    return kChecks;
}

}  // namespace veloran::fuzz
