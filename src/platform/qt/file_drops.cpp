#include "platform/qt/file_drops.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/file_addresses.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QWidget>
#include <utility>

namespace larkspin {

namespace {

// Read byte by byte: a name on the disk needn't be valid text, and Qt would change it. What isn't
// of this machine comes along by its address, to be told of; empty where nothing else is there.
std::vector<std::string> pathsIn(const QMimeData& dropped) {
    std::vector<std::string> paths;
    bool isAnyHere = false;
    for (const QByteArray& line : dropped.data("text/uri-list").split('\n')) {
        const std::string address = line.trimmed().toStdString();
        const auto path = pathOfAddress(address);
        isAnyHere |= path.has_value();
        if (!address.empty() && !address.starts_with('#')) // a remark
            paths.push_back(path ? drivePath(*path) : address);
    }
    return isAnyHere ? paths : std::vector<std::string>();
}

} // namespace

// The filter is the application's, since the event goes first to what lies under the mouse.
FileDrops::FileDrops(QWidget& window, Take take) : window_(window), take_(std::move(take)) {
    window.setAcceptDrops(true);
    qApp->installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* object, QEvent* event) {
    const auto type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return false;
    const auto* const widget = qobject_cast<QWidget*>(object);
    if (!widget || widget->window() != &window_)
        return false;
    auto& drop = static_cast<QDropEvent&>(*event);
    const auto paths = pathsIn(*drop.mimeData());
    if (paths.empty())
        return false;
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    // The disk is looked at only when something is dropped, not while it is dragged.
    if (type == QEvent::Drop)
        take_(paths);
    return true;
}

} // namespace larkspin
