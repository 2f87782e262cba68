#pragma once

#include <QStringList>

class QMimeData;

namespace veloran {

/// The files of this machine among what is dragged or pasted.
QStringList localFiles(const QMimeData& source);

}  // namespace veloran
