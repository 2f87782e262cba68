#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include "../ui_fixture.h"
#include "ui/settings/settings_view.h"

namespace veloran::test {

/// The sheet on its window, shown for the state of a simulated machine.
class SettingsFixture : public UiFixture {
  protected:
    void SetUp() override { open(); }

    void open() {
        state->showSettings = true;
        sheet = new SettingsView(state, &window);
        sheet->present();
        QTest::qWait(0);
    }

    QLineEdit& field(const char* name) { return child<QLineEdit>(*sheet, name); }
    void type(const char* name, const QString& text) {
        field(name).selectAll();
        QTest::keyClick(&field(name), Qt::Key_Delete);
        QTest::keyClicks(&field(name), text);
    }
    void click(const char* name) { child<QAbstractButton>(*sheet, name).click(); }

    QWidget window;
    QPointer<SettingsView> sheet;
};

}  // namespace veloran::test
