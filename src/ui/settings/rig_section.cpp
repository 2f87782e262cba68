#include "ui/settings/rig_section.h"

#include "ui/q_text.h"

namespace veloran {

RigSection::RigSection(std::shared_ptr<AppState> state)
    : FormSection(std::move(state), tr("Rig Control (rigctld)")),
      host_(makeField({"rigHost", tr("Rig host")}, "localhost", kTextWidth)),
      port_(makeField({"rigPort", tr("Rig port")}, "4532", kTextWidth)) {
    addRow(tr("Host"), inRow({host_}, 0));
    addRow(tr("Port"), inRow({port_}, 0));
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
