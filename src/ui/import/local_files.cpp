#include "ui/import/local_files.h"

#include <QMimeData>
#include <QUrl>

namespace veloran {

QStringList localFiles(const QMimeData& source) {
    QStringList paths;
    for (const QUrl& url : source.urls()) {
        if (url.isLocalFile()) paths += url.toLocalFile();
    }
    return paths;
}

}  // namespace veloran
