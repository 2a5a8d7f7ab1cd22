#include "app/command_links.h"

#include "base/log.h"
#include "base/notice.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

class CommandLinksTest : public testing::Test {
protected:
    CommandLinksTest()
    {
        Log::setDirectory(folder.path());
        QObject::connect(&notices, &NoticeBoard::posted, &notices,
                         [this](const Notice &notice) { done.append(notice.text + '|' + notice.symbol); });
    }
    CommandLinks::Actions actions()
    {
        return {
            .perform =
                [this](HotKeyAction action) { done.append(QLatin1String(hotKeyInfo(action).rawValue)); },
            .captureWithCurrentMode = [this] { done.append("current mode"); },
            .captureRegion = [this] { done.append("region"); },
            .runPreset =
                [this](const QString &name) {
                    done.append("preset " + name);
                    return name == "Wide";
                },
            .openFile = [this](const QString &path) { done.append("file " + path); },
        };
    }

    TemporaryFolder folder;
    NoticeBoard notices;
    QStringList done;
    CommandLinks links{actions(), notices};
};

} // namespace

TEST_F(CommandLinksTest, DoWhatTheyNameAndTellOfWhatTheyDoNot)
{
    const std::pair<const char *, QStringList> rows[]{
        {"lumenpost://capture/region", {"region"}},
        {"lumenpost://capture/screen", {"fullScreen"}},
        {"lumenpost://capture/scrolling", {"scrolling"}},
        {"lumenpost://capture/text", {"grabText"}},
        {"lumenpost://capture/video", {"record"}},
        {"lumenpost://capture/steps", {"steps"}},
        {"lumenpost://capture", {"current mode"}},
        {"lumenpost://capture/delayed", {"delayed"}},
        {"lumenpost://record", {"record"}},
        {"TIDEGRASP://library", {"library"}},
        {"lumenpost://pin-last", {"pinLast"}},
        {"lumenpost://preset/Wide", {"preset Wide"}},
        {"lumenpost://preset/Tall", {"preset Tall", "No preset named “Tall”|questionmark.circle"}},
        {"lumenpost://open?path=/tmp/a%20b.png", {"file /tmp/a b.png"}},
        {"lumenpost://dance?who=/home/ann/diary.png", {"Unknown Lumenpost link|link"}},
        {"file:///tmp/a%20b.png", {"file /tmp/a b.png"}},
        {"/tmp/100%.png", {"file /tmp/100%.png"}},
        {"shot:1.png", {"file shot:1.png"}},
    };
    for (const auto &[word, expected] : rows) {
        done.clear();
        links.open(word);
        EXPECT_EQ(done, expected) << word;
    }
    // A file of that very name is no link.
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    ASSERT_TRUE(QFile("lumenpost:a.png").open(QIODevice::WriteOnly));
    done.clear();
    links.open("lumenpost:a.png");
    EXPECT_EQ(done, QStringList{"file lumenpost:a.png"});
    QDir::setCurrent(before);
    Log::flush();
    QFile log(folder.path("lumenpost.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QByteArray lines = log.readAll();
    EXPECT_TRUE(lines.contains("[ERROR] Unknown link: lumenpost://dance\n"));
    EXPECT_FALSE(lines.contains("diary")) << "names of files stay out of the log";
}
