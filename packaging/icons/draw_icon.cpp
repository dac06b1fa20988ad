// Draws the icon in one size, for desktops and software centres that take no SVG.
// usage: draw_icon ICON.svg SIZE ICON.png
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdlib>

int main(int count, char** arguments) {
    if (count != 4)
        return EXIT_FAILURE;
    QSvgRenderer drawing(QString::fromLocal8Bit(arguments[1]));
    const int size = std::atoi(arguments[2]);
    QImage icon(size, size, QImage::Format_ARGB32);
    if (!drawing.isValid() || icon.isNull())
        return EXIT_FAILURE;
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    drawing.render(&painter);
    painter.end();
    return icon.save(QString::fromLocal8Bit(arguments[3])) ? EXIT_SUCCESS : EXIT_FAILURE;
}
