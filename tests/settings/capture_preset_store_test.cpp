#include "settings/capture_preset_store.h"

#include "settings/defaults.h"
#include "support/temporary_folder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

class CapturePresetStoreTest : public testing::Test {
protected:
    QStringList names() const
    {
        QStringList names;
        for (const CapturePreset &preset : store->presets())
            names.append(preset.name);
        return names;
    }
    // The same settings seen by a fresh process.
    void restart()
    {
        store.reset();
        defaults = std::make_unique<Defaults>(folder.path("defaults.json"));
        settings = std::make_unique<CaptureSettings>(*defaults);
        store = std::make_unique<CapturePresetStore>(*defaults, *settings);
    }
    CapturePresetStoreTest() { restart(); }

    TemporaryFolder folder;
    std::unique_ptr<Defaults> defaults;
    std::unique_ptr<CaptureSettings> settings;
    std::unique_ptr<CapturePresetStore> store;
};

} // namespace

TEST_F(CapturePresetStoreTest, StartsWithThreeAndStoresNothingUntilAChange)
{
    QStringList summaries;
    for (const CapturePreset &preset : store->presets()) {
        summaries.append(preset.name + ": " + preset.summary());
        EXPECT_TRUE(preset.options.systemAudio);
        EXPECT_FALSE(preset.hotkey);
    }
    EXPECT_EQ(summaries, (QStringList{"Window to Clipboard: Region → backdrop → clipboard",
                                      "Delayed Region: Region → 5s delay → editor",
                                      "Recording with Clicks: Video → editor"}));
    EXPECT_TRUE(store->presets().last().options.cursor && store->presets().last().options.showClicks);
    EXPECT_FALSE(defaults->contains(CapturePresetStore::kKey));
}

TEST_F(CapturePresetStoreTest, KeepsChangesOverARestart)
{
    QSignalSpy changed(store.get(), &CapturePresetStore::changed);
    settings->setMode(CaptureMode::Scrolling);
    settings->setOn(CaptureSettings::Switch::CopyToClipboard, true);
    CapturePreset mine = store->addFromCurrent();
    EXPECT_EQ(mine.name, "My Scroll Preset");
    EXPECT_TRUE(mine.options.clipboard);
    mine.hotkey = CapturePresetStore::suggestedHotkey(3);
    store->update(mine);
    CapturePreset stranger = mine;
    stranger.id = QUuid::createUuid();
    store->update(stranger);
    store->remove(store->presets().first());
    EXPECT_EQ(changed.count(), 3);
    const QList<CapturePreset> before = store->presets();
    restart();
    EXPECT_EQ(store->presets(), before);
    EXPECT_EQ(store->preset(mine.id), mine);
    EXPECT_EQ(store->named("my SCROLL preset"), mine);
    EXPECT_FALSE(store->named("My Scroll"));
}

TEST_F(CapturePresetStoreTest, KeepsAnUnknownModeAndTreatsItAsARegion)
{
    CapturePreset preset = store->presets().first();
    preset.mode = "hologram";
    store->update(preset);
    restart();
    EXPECT_EQ(store->presets().first().mode, "hologram");
    EXPECT_EQ(store->presets().first().captureMode(), CaptureMode::AllInOne);
    EXPECT_TRUE(store->presets().first().summary().startsWith("Region"));
}

TEST_F(CapturePresetStoreTest, StartsOverWhenAnyOfItCannotBeReadAndLeavesTheDataUntilAChange)
{
    store->addFromCurrent();
    const QJsonArray good =
        QJsonDocument::fromJson(defaults->string(CapturePresetStore::kKey).toUtf8()).array();
    QStringList spoiled{"", "{}", "[1]", "[", "null"};
    for (const char *key : {"id", "name", "mode", "options"}) {
        QJsonArray array = good;
        QJsonObject entry = array.last().toObject();
        entry.remove(QLatin1String(key));
        array.replace(array.size() - 1, entry);
        spoiled.append(QString::fromUtf8(QJsonDocument(array).toJson()));
    }
    QJsonArray keyed = good;
    QJsonObject entry = keyed.last().toObject();
    entry.insert("hotkey", QJsonObject{{"keyCode", "F"}});
    keyed.replace(keyed.size() - 1, entry);
    spoiled.append(QString::fromUtf8(QJsonDocument(keyed).toJson()));
    for (const QString &text : spoiled) {
        defaults->set(CapturePresetStore::kKey, text);
        restart();
        EXPECT_EQ(names(), (QStringList{"Window to Clipboard", "Delayed Region", "Recording with Clicks"}))
            << text.toStdString();
        EXPECT_EQ(defaults->string(CapturePresetStore::kKey), text);
    }
}

TEST(SuggestedHotkey, CountsThroughTheDigitsAndStaysAtTheLast)
{
    const int modifiers = KeyCombo::Control | KeyCombo::Option | KeyCombo::Shift;
    EXPECT_EQ(modifiers, 6656);
    EXPECT_EQ(CapturePresetStore::suggestedHotkey(0), (KeyCombo{18, modifiers}));
    EXPECT_EQ(CapturePresetStore::suggestedHotkey(8), CapturePresetStore::suggestedHotkey(9));
}
