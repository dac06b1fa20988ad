// Files and directories that are let go of with the mouse anywhere over a window, also over what
// takes dropped text by itself, such as a line to type in: no path is taken for a text.
#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace larkspin {

class FileDrops : public QObject {
public:
    // Is given drive paths, from inside of Qt's own callback. What is no file of this machine is
    // left out.
    using Take = std::function<void(const std::vector<std::string>& paths)>;

    FileDrops(QWidget& window, Take take); // which must outlive this

private:
    bool eventFilter(QObject* object, QEvent* event) override;

    QWidget& window_;
    Take take_;
};

} // namespace larkspin
