#include "settings_fixture.h"
#include "ui/widgets/switch_button.h"

namespace veloran::test {
namespace {

class SwitchesTest : public SettingsFixture {};

/// Settings change from elsewhere, too: another window, the stored value of a fresh start.
TEST_F(SwitchesTest, EachFollowsItsFieldBothWaysAndNoOther) {
    const std::vector<std::pair<const char*, Published<bool>*>> switches = {
        {"polarBearingLine", &state->polarBearingLine},
        {"rigAutoConnect", &state->rigAutoConnect},
        {"forceClassicRigctld", &state->forceClassicRigctld},
        {"obs2Enabled", &state->obs2Enabled}};
    for (const auto& [name, field] : switches) *field = false;
    for (const auto& [changed, field] : switches) {
        for (const bool on : {true, false}) {
            *field = on;
            sheet->refresh();
            for (const auto& [name, ignored] : switches) {
                EXPECT_EQ(child<SwitchButton>(*sheet, name).isChecked(),
                          on && std::string(name) == changed)
                    << name << " after " << changed;
            }
            EXPECT_EQ(field->get(), on) << "what is shown is not set";
        }
    }
}

TEST_F(SwitchesTest, EachIsRightWhenTheSheetOpens) {
    const auto isOn = [this](const char* name) {
        return child<SwitchButton>(*sheet, name).isChecked();
    };
    for (const bool on : {true, false, true}) {
        state->polarBearingLine = on;
        state->obs2Enabled = !on;
        delete sheet;
        open();
        EXPECT_EQ(isOn("polarBearingLine"), on);
        EXPECT_EQ(isOn("obs2Enabled"), !on);
    }
}

}  // namespace
}  // namespace veloran::test
