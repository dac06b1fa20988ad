#include "platform/qt/dropped_paths.h"

#include "platform/posix/drive_paths.h"

#include <QByteArray>

namespace larkspin {

// Read by the byte: a name on the disk needn't be text, and Qt's own reading would change it.
std::vector<std::string> droppedPaths(const QMimeData& dropped) {
    static const QByteArray scheme = "file://";
    std::vector<std::string> paths;
    for (const QByteArray& line : dropped.data("text/uri-list").split('\n')) {
        if (!line.startsWith(scheme))
            continue;
        const qsizetype root = line.indexOf('/', scheme.size()); // behind the name of a machine
        if (root < 0)
            continue;
        const QByteArray path = QByteArray::fromPercentEncoding(line.mid(root).trimmed());
        paths.push_back(drivePath({path.constData(), static_cast<std::size_t>(path.size())}));
    }
    return paths;
}

} // namespace larkspin
