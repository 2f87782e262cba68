#include "ui/application_version.h"

#include <QCoreApplication>

namespace veloran {

std::optional<std::string> applicationVersion() {
    const QString version = QCoreApplication::applicationVersion();
    if (version.isEmpty()) return std::nullopt;
    return version.toStdString();
}

}  // namespace veloran
