#include "ui/settings/rest_pattern_section.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/q_text.h"

namespace veloran {

RestPatternSection::RestPatternSection(std::shared_ptr<AppState> state)
    : FormSection(std::move(state), tr("SAT_PROTO Output")) {
    auto* group = new QWidget;
    group->setAccessibleName(tr("rest_hz pattern"));
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    group->setSizePolicy(policy);
    addChoice(group, tr("Transponder center — wideband SDR (A)"),
              SatProtoRestPattern::transponderCenter);
    addChoice(group, tr("Selected RX freq + cal + RIT — narrow SDR / IC-9700 (B)"),
              SatProtoRestPattern::selectedDL);
    addRow(tr("rest_hz pattern"), group);
    addNote(
        tr("Pattern A: receiver parks at the spec-sheet centre; the bird's drift shows as the "
           "beacon's visible offset on the Tarnwave waterfall. Cal / RIT / passband offset are "
           "STORED but NOT applied to rest_hz.\n"
           "Pattern B: receiver parks at the operator's chosen DL freq with transponder cal "
           "applied so the actual signal lands at the displayed centre. UL is computed via the "
           "same cal."));
}

QRadioButton* RestPatternSection::addChoice(QWidget* group, const QString& text,
                                            SatProtoRestPattern pattern) {
    auto* choice = new WrappingRadio(qText(rawValue(pattern)), text);
    group->layout()->addWidget(choice);
    connect(choice, &QRadioButton::toggled, this, [this, pattern](bool on) {
        if (on) state().satProtoRestPattern = pattern;
    });
    follow([this, choice, pattern] {
        if (choice->isChecked() || state().satProtoRestPattern.get() != pattern) return;
        const QSignalBlocker silent(choice);
        choice->setChecked(true);
    });
    return choice;
}

}  // namespace veloran
