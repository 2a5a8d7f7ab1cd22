// Draws pages with their truth for bench_recognition: private text on grounds of many kinds, signs that
// readers like to take for others, and texts in several languages.
//
//     truth_pages FOLDER [SEED]
//
// Makes one folder for each kind of page. Another seed gives other texts: a rule is judged on pages that were
// drawn after it was written.

#include "truth_texts.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <cmath>

namespace {

// How the private stretch of a line is set.
struct Setting {
    QString name;
    QString family = "DejaVu Sans";
    int pixels = 15;
    QColor paper = Qt::white;
    QColor pen = QColor(35, 35, 40);
    QColor secretPen = {}; // the pen's when invalid
    bool isBold = false;
    bool isItalic = false;
    bool isStruck = false;
    bool isUnderlined = false;
    bool isPhotograph = false;
};

// A soft photograph: patches of colour that flow into each other, with the grain of a sensor.
QImage photograph(const QSize &size, QRandomGenerator &random)
{
    QImage rough(size.width() / 90 + 2, size.height() / 90 + 2, QImage::Format_RGB32);
    const int darkest = random.bounded(2) * 110 + 20; // all dark or all light, as grounds of text are chosen
    for (int y = 0; y < rough.height(); ++y)
        for (int x = 0; x < rough.width(); ++x)
            rough.setPixel(x, y,
                           qRgb(darkest + random.bounded(90), darkest + random.bounded(90),
                                darkest + random.bounded(90)));
    QImage picture = rough.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                         .convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int grain = random.bounded(13) - 6;
            row[x] =
                qRgb(std::clamp(qRed(row[x]) + grain, 0, 255), std::clamp(qGreen(row[x]) + grain, 0, 255),
                     std::clamp(qBlue(row[x]) + grain, 0, 255));
        }
    }
    return picture;
}

QJsonArray jsonOf(const QRectF &rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

// Draws lines below each other, and tells their truth.
class Page {
public:
    Page(const Setting &setting, int lines, QRandomGenerator &random) : m_setting(setting)
    {
        const QSize size(std::max(1000, setting.pixels * 34), 40 + int(lines * setting.pixels * 2.1));
        m_image = QImage(size, QImage::Format_RGB32);
        m_image.fill(setting.paper);
        if (setting.isPhotograph) {
            m_image = photograph(size, random);
            m_setting.pen =
                qGray(m_image.pixel(size.width() / 2, size.height() / 2)) > 118 ? Qt::black : Qt::white;
        }
    }

    void add(const TruthLine &line)
    {
        QPainter painter(&m_image);
        painter.setPen(m_setting.pen);
        QFont font(m_setting.family);
        font.setPixelSize(m_setting.pixels);
        QFont marked = font;
        marked.setBold(m_setting.isBold);
        marked.setItalic(m_setting.isItalic);
        marked.setStrikeOut(m_setting.isStruck);
        marked.setUnderline(m_setting.isUnderlined);
        m_baseline += int(m_setting.pixels * 2.1);
        const double left = 20;
        double x = left;
        const auto draw = [&](const QString &text, const QFont &with) {
            painter.setFont(with);
            painter.drawText(QPointF(x, m_baseline), text);
            const QRectF box(x, m_baseline - m_setting.pixels * 0.75,
                             QFontMetricsF(with).horizontalAdvance(text), m_setting.pixels * 0.95);
            x = box.right();
            return box;
        };
        draw(line.before, font);
        QJsonArray secrets;
        if (!line.secret.isEmpty()) {
            if (m_setting.secretPen.isValid())
                painter.setPen(m_setting.secretPen);
            const QRectF box = draw(line.secret, marked);
            secrets.append(QJsonObject{{"text", line.secret}, {"rect", jsonOf(box)}});
            painter.setPen(m_setting.pen);
        }
        draw(line.after, font);
        m_lines.append(QJsonObject{
            {"text", line.before + line.secret + line.after},
            {"rect", jsonOf({left, m_baseline - m_setting.pixels * 0.75, x - left, m_setting.pixels * 0.95})},
            {"sensitive", secrets}});
    }

    bool save(const QString &path) const
    {
        QFile truth(path + ".json");
        return m_image.save(path + ".png") && truth.open(QIODevice::WriteOnly) &&
               truth.write(QJsonDocument(QJsonObject{{"lines", m_lines}}).toJson()) > 0 && truth.flush();
    }

private:
    Setting m_setting;
    QImage m_image;
    QJsonArray m_lines;
    int m_baseline = 10;
};

const QList<Setting> &settings()
{
    static const QColor dark(28, 30, 36);
    static const QColor light(222, 224, 228);
    static const QList<Setting> all{
        {.name = "plain"},
        {.name = "small", .pixels = 10},
        {.name = "struck", .isStruck = true},
        {.name = "underlined", .isUnderlined = true},
        {.name = "bold-on-dark",
         .paper = dark,
         .pen = light,
         .secretPen = QColor(240, 120, 130),
         .isBold = true},
        {.name = "italic-on-dark",
         .paper = dark,
         .pen = light,
         .secretPen = QColor(110, 190, 250),
         .isItalic = true},
        {.name = "columns-on-dark",
         .family = "DejaVu Sans Mono",
         .pixels = 14,
         .paper = dark,
         .pen = light,
         .secretPen = QColor(230, 200, 110)},
        {.name = "large", .pixels = 48},
        {.name = "huge", .pixels = 96},
        {.name = "photograph", .pixels = 18, .isPhotograph = true},
        {.name = "photograph-large", .pixels = 40, .isPhotograph = true},
    };
    return all;
}

bool draw(const QDir &folder, const Setting &setting, const QString &name, const QList<TruthLine> &lines,
          QRandomGenerator &random)
{
    Page page(setting, int(lines.size()), random);
    for (const TruthLine &line : lines)
        page.add(line);
    return folder.mkpath(setting.name) && page.save(folder.filePath(setting.name) + '/' + name);
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "truth_pages FOLDER [SEED]\n");
        return 2;
    }
    QRandomGenerator random(argc > 2 ? quint32(std::atoi(argv[2])) : 1);
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    bool isDone = true;
    for (const Setting &setting : settings()) {
        // Of large type fewer, shorter secrets have room on a line.
        const int most = setting.pixels > 40 ? 24 : setting.pixels > 30 ? 36 : 90;
        for (int page = 0; page < (setting.isPhotograph ? 3 : 2); ++page)
            isDone &= draw(folder, setting, QString::number(page), privateLines(random, 22, most), random);
    }
    for (const QString &language : truthLanguages())
        for (const int pixels : {13, 17})
            isDone &= draw(folder,
                           {.name = "language-" + language,
                            .family = pixels == 13 ? "Noto Sans" : "DejaVu Sans",
                            .pixels = pixels},
                           QString::number(pixels), linesIn(language), random);
    for (const QString &language : truthLanguages())
        for (const QString &family : {QString("Inter"), QString("DejaVu Sans")})
            isDone &= draw(folder, {.name = "labels-" + language, .family = family, .pixels = 14},
                           QString(family).remove(' '), labelsIn(language), random);
    for (const int pixels : {13, 16})
        isDone &= draw(folder, {.name = "language-mixed", .family = "DejaVu Sans", .pixels = pixels},
                       QString::number(pixels), linesInSeveral(random), random);
    for (const QString &family : {QString("DejaVu Sans"), QString("Noto Sans"), QString("DejaVu Sans Mono")})
        for (const int pixels : {14, 22})
            isDone &= draw(folder, {.name = "signs", .family = family, .pixels = pixels},
                           QString(family).remove(' ') + QString::number(pixels), linesOfSigns(), random);
    isDone &= draw(folder, {.name = "code", .family = "DejaVu Sans Mono", .pixels = 11}, "dejavu",
                   linesOfCode(), random);
    isDone &= draw(folder, {.name = "code", .family = "JetBrains Mono", .pixels = 11}, "jetbrains",
                   linesOfCode(), random);
    for (const QString &family : {QString("DejaVu Sans Mono"), QString("JetBrains Mono")}) {
        Setting setting{.name = "scripts", .family = family, .pixels = 11};
        isDone &= draw(folder, setting, QString(family).remove(' '), linesOfScripts(), random);
        setting.paper = QColor(28, 30, 36);
        setting.pen = QColor(222, 224, 228);
        isDone &= draw(folder, setting, QString(family).remove(' ') + "-dark", linesOfScripts(), random);
    }
    if (!isDone)
        std::fprintf(stderr, "The pages can't be written.\n");
    return isDone ? 0 : 1;
}
