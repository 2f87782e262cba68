#include "ui/detail/detail_panel.h"

#include <QHBoxLayout>

#include "ui/detail/frequency_column.h"
#include "ui/detail/pass_column.h"
#include "ui/detail/rig_column.h"
#include "ui/widgets/divider.h"

namespace veloran {

DetailPanel::DetailPanel(std::shared_ptr<AppState> state, QWidget* parent) : QWidget(parent) {
    setObjectName("detailPanel");
    setFixedHeight(kHeight);
    auto* pass = new PassColumn(state);
    auto* frequencies = new FrequencyColumn(state);
    auto* rig = new RigColumn(state);
    pass->setFixedWidth(kPassWidth);
    rig->setFixedWidth(kRigWidth);
    connect(this, &DetailPanel::refreshed, pass, &PassColumn::refresh);
    connect(this, &DetailPanel::refreshed, frequencies, &FrequencyColumn::refresh);
    connect(this, &DetailPanel::refreshed, rig, &RigColumn::refresh);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(pass);
    row->addWidget(new Divider(Qt::Vertical));
    row->addWidget(frequencies, 1);
    row->addWidget(new Divider(Qt::Vertical));
    row->addWidget(rig);
}

void DetailPanel::refresh() {
    emit refreshed();
}

}  // namespace veloran
