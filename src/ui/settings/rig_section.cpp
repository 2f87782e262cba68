#include "ui/settings/rig_section.h"

#include "base/text.h"
#include "ui/q_text.h"
#include "ui/settings/field_mark.h"
#include "ui/widgets/value_label.h"

namespace veloran {

RigSection::RigSection(std::shared_ptr<AppState> state)
    : FormSection(std::move(state), tr("Rig Control (rigctld)")),
      host_(makeField({"rigHost", tr("Rig host")}, "localhost", kTextWidth)),
      port_(makeField({"rigPort", tr("Rig port")}, "4532", kTextWidth)) {
    addRow(tr("Host"), inRow({host_}, 0));
    auto* portNote = markUnread(
        *port_,
        [](std::string_view text) {
            return readPort(trimmed(text, Blanks::horizontal)).has_value();
        },
        tr("0 to 65535"));
    addRow(tr("Port"), inRow({port_, portNote}, 6));
    addSwitch({"rigAutoConnect", tr("Auto-connect on launch")}, &AppState::rigAutoConnect);
    addSwitch({"forceClassicRigctld", tr("Force Classic rigctld (disable SAT_PROTO)")},
              &AppState::forceClassicRigctld);
    addNote(tr("Auto-detected by default. Toggle on to pin to legacy `set_freq` for debugging."));
}

void RigSection::fill(const SettingsTexts& texts) {
    host_->setText(qText(texts.host));
    port_->setText(qText(texts.port));
}

void RigSection::collect(SettingsTexts& texts) const {
    texts.host = host_->text().toStdString();
    texts.port = port_->text().toStdString();
}

}  // namespace veloran
