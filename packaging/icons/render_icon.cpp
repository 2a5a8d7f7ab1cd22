// render_icon FILE.svg SIDE TARGET.png: a square picture of the icon, SIDE pixels wide.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 4)
        return 2;
    QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
    const int side = QByteArray(argv[2]).toInt();
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    icon.render(&painter);
    painter.end();
    if (!icon.isValid() || !image.save(QString::fromLocal8Bit(argv[3]))) {
        std::fprintf(stderr, "render_icon: %s was not written\n", argv[3]);
        return 1;
    }
    return 0;
}
