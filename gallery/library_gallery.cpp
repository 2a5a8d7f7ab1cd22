// Shows the Library window: library_gallery [--size WxH] [--inspector] [--select N] [--sheet KIND] [--tab N]
//                           [--preview] [--search WORDS] [--empty] [--save FILE] [FILE…]
//   KIND    export, pdf, combine, rename, guide or cleanup
//   FILE…   captures to show; without any, some are made
#include "base/clock.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "base/translations.h"
#include "fakes/fake_platform.h"
#include "library/library.h"
#include "library/model/library_model.h"
#include "library/model/text_indexing.h"
#include "library/ui/library_window.h"
#include "library/ui/library_work.h"
#include "pins/pins.h"
#include "platform/session/media_loader.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "ui/appearance.h"
#include "ui/segmented_picker.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimer>

namespace {

// Something like a window with text, in a colour of its own.
QImage madeCapture(int number)
{
    static constexpr std::array kSizes{QSize(1280, 800), QSize(900, 640), QSize(640, 1200), QSize(1600, 500)};
    QImage picture(kSizes[size_t(number) % kSizes.size()], QImage::Format_RGB32);
    picture.fill(QColor::fromHsv(number * 37 % 360, 60, 240));
    QPainter painter(&picture);
    painter.fillRect(0, 0, picture.width(), 48, QColor::fromHsv(number * 37 % 360, 140, 190));
    painter.setPen(Qt::white);
    painter.setFont(Theme::font(22.0, QFont::DemiBold));
    painter.drawText(QRect(24, 0, 800, 48), Qt::AlignVCenter, QStringLiteral("Window %1").arg(number));
    painter.setPen(QColor(60, 60, 70));
    painter.setFont(Theme::font(18.0));
    for (int y = 90; y < picture.height() - 30; y += 34)
        painter.drawText(40, y, QString("The quick brown fox jumps over the lazy dog ").repeated(1 + y % 3));
    return picture;
}

void fill(Library &library)
{
    static constexpr std::array kNames{"Invoice March", "Login form", "Error in the settings", "Chart",
                                       "Capture 2026-03-14 at 09.41.12"};
    for (int i = 0; i < 23; ++i) {
        const QString path =
            library.folder() + QStringLiteral("/%1 %2.png").arg(QLatin1String(kNames[size_t(i) % 5])).arg(i);
        madeCapture(i / 2).save(path);
        QFile file(path);
        if (file.open(QIODevice::ReadWrite))
            file.setFileTime(QDateTime::currentDateTime().addSecs(-i * 9000 - (i > 12 ? 40 * 86400 : 0)),
                             QFile::FileModificationTime);
        library.catalog().setSource(path, i % 3 ? QStringLiteral("Firefox") : QStringLiteral("Terminal"));
        if (i % 4 == 1)
            library.catalog().setFavorite(path, true);
        library.catalog().setIndexedText(path, QStringLiteral("The quick brown fox jumps over the lazy dog"));
    }
    const QUuid bugs = library.catalog().createCollection(QStringLiteral("Bugs"));
    library.catalog().createCollection(QStringLiteral("Documentation of the second release"));
    library.catalog().add({QStringLiteral("Chart 3.png"), QStringLiteral("Login form 1.png")}, bugs);
}

LibrarySheet::Kind kindOf(const QString &word)
{
    static const QHash<QString, LibrarySheet::Kind> kinds{
        {"export", LibrarySheet::Kind::Export},   {"pdf", LibrarySheet::Kind::Pdf},
        {"combine", LibrarySheet::Kind::Combine}, {"rename", LibrarySheet::Kind::Rename},
        {"guide", LibrarySheet::Kind::Guide},     {"cleanup", LibrarySheet::Kind::CleanUp}};
    return kinds.value(word);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCommandLineParser words;
    words.addOptions({{"size", "", "WxH", "1180x740"},
                      {"inspector", ""},
                      {"select", "", "N", "0"},
                      {"sheet", "", "KIND"},
                      {"tab", "", "N", "0"},
                      {"preview", ""},
                      {"search", "", "WORDS"},
                      {"empty", ""},
                      {"save", "", "FILE"}});
    words.process(application);
    installTranslations();
    Appearance appearance(application);
    QTemporaryDir folder;
    FakePlatform fakes(folder.path());
    const auto movies = makeMovies();
    Clock clock;
    NoticeBoard notices;
    Defaults defaults{{}};
    AppSettings prefs{defaults, fakes.secrets, fakes.loginItem, fakes.paths, notices};
    Library library{prefs, fakes.trash, clock};
    TipCenter tips{&prefs};
    library.ensureDirectory();
    if (!words.positionalArguments().isEmpty()) {
        for (const QString &path : words.positionalArguments())
            std::ignore = library.importFile(path);
    }
    if (!words.isSet("empty"))
        fill(library);
    LibraryModel model{library, defaults, clock};
    TextRecognizer recognizer{fakes.text, fakes.faces};
    TextIndexing indexing{library, recognizer};
    ClaudeClient claude{fakes.http, prefs};
    PendingWork pending;
    Pins pins{fakes.pasteboard, notices};
    LibraryWork work{
        {library, fakes.workspace, notices, claude, prefs, pending, clock, indexing, [](const QString &) {}}};
    LibraryWindow window{{model, fakes.pasteboard, fakes.workspace, notices, pins, *movies, prefs, work,
                          folder.filePath("hashes"), [](const QString &) {}}};
    const QStringList size = words.value("size").split('x');
    window.resize(size[0].toInt(), size[1].toInt());
    window.show();
    QTimer::singleShot(600, &window, [&] {
        QSet<QString> selection;
        for (int i = 0; i < words.value("select").toInt() && i < model.visibleCount(); ++i)
            selection.insert(model.visiblePath(i));
        model.setSelection(selection);
        model.setQuery(words.value("search"));
        model.setShowsInspector(words.isSet("inspector"));
        if (words.isSet("preview"))
            model.setPreviewing(model.visiblePath(0));
        if (words.isSet("sheet"))
            model.setSheet(LibrarySheet{kindOf(words.value("sheet")), model.selectedPaths(), {}});
        if (auto *tabs = window.findChild<SegmentedPicker *>(); tabs && words.value("tab").toInt() > 0)
            Q_EMIT tabs->chosen(words.value("tab").toInt());
    });
    if (words.isSet("save"))
        QTimer::singleShot(2500, &window, [&] {
            window.grab().save(words.value("save"));
            QCoreApplication::quit();
        });
    return QApplication::exec();
}
