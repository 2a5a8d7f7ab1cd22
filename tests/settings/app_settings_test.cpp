#include "base/notice.h"
#include "fakes/fake_desktop.h"
#include "platform/modifier_keys.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QJsonDocument>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

class AppSettingsTest : public testing::Test {
protected:
    QString file() const { return m_home.path("config/defaults.json"); }
    void store(const QByteArray &json)
    {
        QDir().mkpath(m_home.path("config"));
        QFile stored(file());
        ASSERT_TRUE(stored.open(QIODevice::WriteOnly));
        stored.write(json);
    }
    QJsonObject stored() const
    {
        QFile read(file());
        return read.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(read.readAll()).object()
                                              : QJsonObject();
    }
    // A fresh process on the same files.
    AppSettings &start()
    {
        m_settings.reset();
        m_defaults = std::make_unique<Defaults>(file());
        m_settings = std::make_unique<AppSettings>(*m_defaults, m_secrets, m_loginItem, m_paths, m_notices);
        return *m_settings;
    }

    TemporaryFolder m_home;
    FakePaths m_paths{m_home.path()};
    FakeSecrets m_secrets;
    FakeLoginItem m_loginItem;
    NoticeBoard m_notices;
    std::unique_ptr<Defaults> m_defaults;
    std::unique_ptr<AppSettings> m_settings;
};

} // namespace

TEST_F(AppSettingsTest, StartFromTheirDefaultsWhenNothingIsStored)
{
    AppSettings &settings = start();
    EXPECT_TRUE(settings.showTips());
    EXPECT_TRUE(settings.showInDock());
    EXPECT_TRUE(settings.shutterSound());
    EXPECT_FALSE(settings.backdropForWindows());
    EXPECT_EQ(settings.imageFormat(), ImageFormat::Png);
    EXPECT_EQ(settings.autoDeleteDays(), 0);
    EXPECT_EQ(settings.saveFolder(), m_home.path("Pictures/Lumenpost"));
    EXPECT_EQ(settings.hotkey(HotKeyAction::FullScreen).display(), "⌃⇧F");

    const CaptureSettings capture(*m_defaults);
    EXPECT_EQ(capture.mode(), CaptureMode::AllInOne);
    EXPECT_EQ(capture.current(), CaptureOptions{});
    EXPECT_TRUE(capture.isOn(CaptureSettings::Switch::StepsAutoRedact));
}

TEST_F(AppSettingsTest, TakeTheDefaultForAValueOfAWrongType)
{
    store(R"({"showTips": "no", "shutterSound": 0, "imageFormat": 3, "autoDeleteDays": "x", "saveFolder": 5,
              "hotkeys": "{\"fullScreen\": {\"keyCode\": \"F\"}}", "captureMode": "hologram", "recordSystemAudio": 0,
              "copyToClipboard": "yes"})");
    AppSettings &settings = start();
    EXPECT_TRUE(settings.showTips());
    EXPECT_TRUE(settings.shutterSound());
    EXPECT_EQ(settings.imageFormat(), ImageFormat::Png);
    EXPECT_EQ(settings.autoDeleteDays(), 0);
    EXPECT_EQ(settings.saveFolder(), settings.defaultFolder());
    EXPECT_EQ(settings.hotkey(HotKeyAction::FullScreen).keyCode, 3);
    const CaptureSettings capture(*m_defaults);
    EXPECT_EQ(capture.mode(), CaptureMode::AllInOne);
    EXPECT_TRUE(capture.current().systemAudio);
    EXPECT_FALSE(capture.current().clipboard);
}

TEST_F(AppSettingsTest, KeepKnownShortcutsBesideAnUnknownOne)
{
    store(R"({"hotkeys": "{\"teleport\":{\"keyCode\":1,\"carbonModifiers\":256},)"
          R"(\"library\":{\"keyCode\":40,\"carbonModifiers\":768}}"})");
    AppSettings &settings = start();
    EXPECT_EQ(settings.hotkey(HotKeyAction::Library).display(), "⇧⌘K");
    EXPECT_EQ(settings.hotkey(HotKeyAction::Capture).display(), "⌃⇧C");
    settings.setPrintKeys(true);
    const KeyCombo panel = settings.panelHotkey();
    settings.setPanelHotkey({9, KeyCombo::Option});
    QSignalSpy told(&settings, &AppSettings::hotkeysChanged);
    settings.setRecordingShortcut(true);
    EXPECT_EQ(told.count(), 1) << "whoever holds the keys lets them go";
    settings.resetHotkeys();
    EXPECT_EQ(start().hotkey(HotKeyAction::Library).display(), "⌃⇧L");
    EXPECT_FALSE(m_settings->printKeys());
    EXPECT_EQ(m_settings->panelHotkey(), panel);

    // One that can't be read makes the value no value at all.
    store(R"({"hotkeys": "{\"capture\":{\"keyCode\":1,\"carbonModifiers\":256},)"
          R"(\"fullScreen\":{\"keyCode\":\"F\"},\"library\":{\"keyCode\":40,\"carbonModifiers\":768}}"})");
    for (const HotKeyInfo &info : kHotKeys)
        EXPECT_EQ(start().hotkey(info.action), info.defaultCombo()) << info.rawValue;
}

TEST_F(AppSettingsTest, ForgetTheFolderOfOneCallOnceAnotherIsChosen)
{
    AppSettings &settings = start();
    settings.overrideSaveFolder(m_home.path("once/"));
    EXPECT_EQ(settings.saveFolder(), m_home.path("once"));
    EXPECT_FALSE(stored().contains("saveFolder"));
    settings.setSaveFolder(m_home.path("Shots"));
    EXPECT_EQ(settings.saveFolder(), m_home.path("Shots"));
}

TEST_F(AppSettingsTest, LastFromOneRunToTheNext)
{
    AppSettings &first = start();
    first.setSaveFolder(m_home.path("Shots/"));
    first.setImageFormat(ImageFormat::Heic);
    first.setShutterSound(false);
    first.setHotkeys({{HotKeyAction::Steps, KeyCombo{122, KeyCombo::Option}}});
    CaptureSettings(*m_defaults).setMode(CaptureMode::Text);
    EXPECT_EQ(stored().value("saveFolder").toString(), m_home.path("Shots"));
    EXPECT_EQ(stored().value("imageFormat").toString(), "heic");

    AppSettings &second = start();
    EXPECT_EQ(second.saveFolder(), m_home.path("Shots"));
    EXPECT_EQ(second.imageFormat(), ImageFormat::Heic);
    EXPECT_FALSE(second.shutterSound());
    EXPECT_EQ(second.hotkey(HotKeyAction::Steps).display(), "⌥F1");
    EXPECT_EQ(CaptureSettings(*m_defaults).mode(), CaptureMode::Text);
}

TEST_F(AppSettingsTest, PutABrokenFileAsideBeforeReplacingIt)
{
    for (const QByteArray &broken : {QByteArray("{\"showTips\": fal"), QByteArray("[1, 2]")}) {
        store(broken); // the second time, too
        start().setShowTips(false);
        EXPECT_EQ(stored().value("showTips"), false);
        QFile kept(file() + ".broken");
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), broken);
    }
}

TEST_F(AppSettingsTest, KeepTheKeyWithTheSecretsAlone)
{
    start().setApiKey("sk-secret");
    EXPECT_EQ(m_secrets.items.value({"anthropic-api-key", "com.oakfenrow.lumenpost"}), "sk-secret");
    EXPECT_FALSE(QJsonDocument(stored()).toJson().contains("sk-secret"));
    EXPECT_EQ(start().apiKey(SecretsAccess::Quiet).result().value_or("nothing"), "sk-secret");
    m_settings->setApiKey({});
    EXPECT_TRUE(m_secrets.items.isEmpty());
    EXPECT_EQ(m_settings->apiKey(SecretsAccess::Quiet).result().value_or("nothing"), "");
}

TEST_F(AppSettingsTest, KeepTheKeyOnceItWasFoundButNoEmptyAnswer)
{
    AppSettings &settings = start();
    const auto key = [&](SecretsAccess access) { return settings.apiKey(access).result(); };
    EXPECT_EQ(key(SecretsAccess::Quiet).value_or("nothing"), "");
    m_secrets.items.insert({"anthropic-api-key", "com.oakfenrow.lumenpost"}, "sk-late");
    m_secrets.isLocked = true;
    EXPECT_EQ(key(SecretsAccess::Quiet).error().kind, Error::Kind::Denied);
    EXPECT_EQ(key(SecretsAccess::MayAsk).value_or("nothing"), "sk-late");
    const int asked = m_secrets.asked;
    EXPECT_EQ(key(SecretsAccess::Quiet).value_or("nothing"), "sk-late");
    EXPECT_EQ(m_secrets.asked, asked);
}

TEST_F(AppSettingsTest, TakeNoLateAnswerForTheKeyThatWasSetMeanwhile)
{
    struct SlowSecrets : FakeSecrets {
        QFuture<Result<QString>> get(const QString &, const QString &, SecretsAccess) override
        {
            return answer.future();
        }
        QPromise<Result<QString>> answer;
    } secrets;
    secrets.answer.start();
    Defaults defaults{QString()};
    AppSettings settings(defaults, secrets, m_loginItem, m_paths, m_notices);
    const auto asked = settings.apiKey(SecretsAccess::MayAsk);
    settings.setApiKey("sk-new");
    secrets.answer.addResult(Result<QString>("sk-old"));
    secrets.answer.finish();
    EXPECT_EQ(asked.result().value_or("nothing"), "sk-new");
    EXPECT_EQ(settings.apiKey(SecretsAccess::Quiet).result().value_or("nothing"), "sk-new");
}

TEST_F(AppSettingsTest, TellWhenTheLoginItemCannotBeChanged)
{
    AppSettings &settings = start();
    QList<Notice> seen;
    QObject::connect(&m_notices, &NoticeBoard::posted, &m_notices,
                     [&](const Notice &notice) { seen.append(notice); });
    m_loginItem.failure = Error{Error::Kind::Failed, "the folder is read-only", {}};
    settings.setLaunchAtLogin(true);
    const Notice expected{"Couldn't change login item: the folder is read-only",
                          "exclamationmark.triangle.fill"};
    EXPECT_EQ(seen, QList<Notice>{expected});
    EXPECT_TRUE(settings.launchAtLogin());
}

TEST(CaptureOptions, NeedAllTenKeys)
{
    CaptureOptions options;
    options.webcam = true;
    options.editor = false;
    QJsonObject object = options.toJson();
    EXPECT_EQ(object.size(), 10);
    EXPECT_EQ(CaptureOptions::fromJson(object), options);
    using O = CaptureOptions;
    const std::pair<const char *, bool O::*> fields[]{
        {"editor", &O::editor},         {"clipboard", &O::clipboard},   {"cursor", &O::cursor},
        {"delay", &O::delay},           {"backdrop", &O::backdrop},     {"systemAudio", &O::systemAudio},
        {"microphone", &O::microphone}, {"showClicks", &O::showClicks}, {"showKeys", &O::showKeys},
        {"webcam", &O::webcam}};
    for (const auto &[key, field] : fields) {
        QJsonObject one = O{}.toJson();
        one[key] = !(O{}.*field);
        O expected;
        expected.*field = !(expected.*field);
        EXPECT_EQ(O::fromJson(one), expected) << key;
        EXPECT_EQ(expected.toJson(), one) << key;
    }
    object.insert("backdrop", 1);
    EXPECT_FALSE(CaptureOptions::fromJson(object));
    object = options.toJson();
    object.remove("webcam");
    EXPECT_FALSE(CaptureOptions::fromJson(object));
}

TEST(KeyCombo, StoresWhatTheKeyboardHeldAndGivesItBack)
{
    EXPECT_EQ(modifierFlags(Qt::ControlModifier), KeyCombo::Command);
    EXPECT_EQ(modifierFlags(Qt::MetaModifier | Qt::ShiftModifier),
              kHotKeys[0].defaultCombo().carbonModifiers);
    EXPECT_EQ(modifierFlags(Qt::AltModifier | Qt::KeypadModifier), KeyCombo::Option);
    const int all = KeyCombo::Command | KeyCombo::Control | KeyCombo::Option | KeyCombo::Shift;
    for (int flags = 0; flags <= all; flags += 0x100)
        EXPECT_EQ(modifierFlags(keyboardModifiers(flags)), flags & all);
}

TEST(KeyCombo, ShowsModifiersInOneOrderAndUnknownKeysByNumber)
{
    const int all = KeyCombo::Command | KeyCombo::Control | KeyCombo::Option | KeyCombo::Shift;
    EXPECT_EQ((KeyCombo{49, all}).display(), "⌃⌥⇧⌘Space");
    EXPECT_EQ((KeyCombo{200, KeyCombo::Shift}).display(), "⇧Key200");
    EXPECT_EQ((KeyCombo{42, KeyCombo::Command}).display(), "⌘\\");
    // Rows of a keyboard, by the codes of their keys.
    const std::pair<QList<int>, const char *> rows[]{
        {{50, 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24}, "`1234567890-="},
        {{12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30, 42}, "QWERTYUIOP[]\\"},
        {{0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39}, "ASDFGHJKL;'"},
        {{6, 7, 8, 9, 11, 45, 46, 43, 47, 44}, "ZXCVBNM,./"},
        {{122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111}, "F1F2F3F4F5F6F7F8F9F10F11F12"},
        {{36, 48, 53, 51, 123, 124, 126, 125}, "↩⇥⎋⌫←→↑↓"}};
    for (const auto &[codes, names] : rows) {
        QString row;
        for (const int code : codes)
            row += KeyCombo::keyName(code);
        EXPECT_EQ(row, QString::fromUtf8(names));
    }
}
