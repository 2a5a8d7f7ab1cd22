#include "settings/migration.h"

#include "fakes/fake_desktop.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/temporary_folder.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace {

class MigrationTest : public testing::Test {
protected:
    void writeOld(const QJsonObject &settings)
    {
        QDir().mkpath(home.path("com.oakfenrow.tidegrasp"));
        QFile file(home.path("com.oakfenrow.tidegrasp/defaults.json"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QJsonDocument(settings).toJson());
    }
    void make(const QString &path)
    {
        QDir().mkpath(QFileInfo(home.path(path)).path());
        QFile file(home.path(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
    }
    bool has(const QString &path) const { return QFileInfo::exists(home.path(path)); }
    bool run(Defaults &own)
    {
        const Migration::Outcome outcome = Migration::runIfNeeded(own, secrets, paths);
        EXPECT_TRUE(outcome.key.result());
        return outcome.hasMigrated;
    }

    TemporaryFolder home;
    FakePaths paths{home.path()};
    FakeSecrets secrets;
    Defaults defaults{home.path("config/defaults.json")};
};

const std::pair<QString, QString> kOldKey(AppSettings::kApiKeyAccount, Migration::kOldService);
const std::pair<QString, QString> kNewKey(AppSettings::kApiKeyAccount, AppSettings::kService);

} // namespace

TEST_F(MigrationTest, CarriesSettingsKeyAndCapturesOverOnce)
{
    writeOld({{"imageFormat", "jpg"}, {"autoDeleteDays", 30}, {"NSWindow", 1}, {"AppleLocale", "de"}});
    defaults.set("autoDeleteDays", 7);
    secrets.items.insert(kOldKey, "sk-old");
    make("Pictures/Tidegrasp/shot.png");
    make("Pictures/Tidegrasp/.tidegrasp/meta.json");
    EXPECT_TRUE(run(defaults));
    EXPECT_EQ(defaults.string("imageFormat"), "jpg");
    EXPECT_EQ(defaults.integer("autoDeleteDays", 0), 7);
    EXPECT_FALSE(defaults.contains("NSWindow") || defaults.contains("AppleLocale"));
    EXPECT_EQ(secrets.items.value(kNewKey), "sk-old");
    EXPECT_EQ(defaults.string("saveFolder"), home.path("Pictures/Lumenpost"));
    EXPECT_TRUE(has("Pictures/Lumenpost/shot.png") && has("Pictures/Lumenpost/.lumenpost/meta.json"));

    make("Pictures/Tidegrasp/later.png");
    secrets.items.remove(kNewKey);
    EXPECT_FALSE(run(defaults));
    EXPECT_TRUE(has("Pictures/Tidegrasp/later.png"));
    EXPECT_FALSE(secrets.items.contains(kNewKey));
}

TEST_F(MigrationTest, LeavesWhatIsNamedOtherwiseOrInTheWayWhereItIs)
{
    secrets.items.insert(kNewKey, "sk-new");
    secrets.items.insert(kOldKey, "sk-old");
    writeOld({{"saveFolder", home.path("Shots")}});
    make("Shots/.tidegrasp/meta.json");
    EXPECT_TRUE(run(defaults));
    EXPECT_EQ(defaults.string("saveFolder"), home.path("Shots"));
    EXPECT_TRUE(has("Shots/.lumenpost/meta.json"));
    EXPECT_EQ(secrets.items.value(kNewKey), "sk-new");

    Defaults fresh{QString()};
    writeOld({{"saveFolder", home.path("Tidegrasp")}});
    make("Tidegrasp/shot.png");
    make("Tidegrasp/.tidegrasp/meta.json");
    make("Lumenpost/other.png");
    EXPECT_TRUE(run(fresh));
    EXPECT_EQ(fresh.string("saveFolder"), home.path("Tidegrasp"));
    EXPECT_TRUE(has("Tidegrasp/shot.png") && has("Tidegrasp/.lumenpost/meta.json"));

    // A link that leads nowhere is in the way, too.
    Defaults linked{QString()};
    writeOld({{"saveFolder", home.path("old/Tidegrasp")}});
    make("old/Tidegrasp/shot.png");
    ASSERT_TRUE(QFile::link(home.path("nowhere"), home.path("old/Lumenpost")));
    EXPECT_TRUE(run(linked));
    EXPECT_TRUE(has("old/Tidegrasp/shot.png"));
    EXPECT_TRUE(QFileInfo(home.path("old/Lumenpost")).isSymLink());
}

TEST_F(MigrationTest, TouchesNoCapturesWhereTheEarlierProgramHasNoSettings)
{
    make("Pictures/Tidegrasp/shot.png");
    for (const bool isEmpty : {false, true}) {
        Defaults fresh{QString()};
        if (isEmpty)
            writeOld({});
        EXPECT_FALSE(run(fresh));
        EXPECT_TRUE(fresh.boolean(Migration::kDoneKey, false));
    }
    EXPECT_TRUE(has("Pictures/Tidegrasp/shot.png"));
    EXPECT_FALSE(has("Pictures/Lumenpost"));
}
