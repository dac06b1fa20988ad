#include "platform/qt/windows/dropped_paths.h"

#include "platform/posix/drive_paths.h"

#include <QByteArray>
#include <algorithm>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {

namespace {

bool isUsable(const std::string& path) {
    const std::string native = nativePath(path);
    struct stat facts {};
    if (::stat(native.c_str(), &facts) != 0)
        return false;
    return S_ISDIR(facts.st_mode) ? ::access(native.c_str(), R_OK) == 0 : S_ISREG(facts.st_mode);
}

} // namespace

// Read byte by byte: a name on the disk needn't be valid text, and Qt would change it.
std::vector<std::string> droppedPaths(const QMimeData& dropped) {
    static const QByteArray scheme = "file://";
    std::vector<std::string> paths;
    for (const QByteArray& line : dropped.data("text/uri-list").split('\n')) {
        if (!line.startsWith(scheme))
            continue;
        const qsizetype root = line.indexOf('/', scheme.size()); // after the name of a machine
        if (root < 0)
            continue;
        const QByteArray path = QByteArray::fromPercentEncoding(line.mid(root).trimmed());
        paths.push_back(drivePath({path.constData(), static_cast<std::size_t>(path.size())}));
    }
    return paths;
}

std::vector<std::string> usable(const std::vector<std::string>& paths) {
    std::vector<std::string> those;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(those), isUsable);
    return those;
}

} // namespace larkspin
