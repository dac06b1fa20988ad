#include "platform/qt/icon.h"

#include "platform/qt/icon_svg.h" // made from packaging/icons/larkspin.svg by the build

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace larkspin {

// The icon comes in the sizes that trays and window lists ask for.
QIcon programIcon() {
    QSvgRenderer drawing{QByteArray(iconSvg)};
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        {
            QPainter painter(&pixmap);
            drawing.render(&painter);
        }
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace larkspin
