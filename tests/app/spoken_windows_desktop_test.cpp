#include "running_program.h"
#include "support/accessibility_bus.h"

// What a reader finds on the real bus when it goes through whole windows of the running program.
class SpokenWindows : public RunningProgram {
protected:
    enum State : unsigned { // bits of what the bus tells
        Checked = 4,
        Editable = 7,
        Enabled = 8,
        Focusable = 11,
        Focused = 12,
        Selectable = 22,
        Selected = 23,
        Sensitive = 24,
        Showing = 25
    };

    quint64 states(const AccessibilityBus::Node &node)
    {
        const QDBusMessage reply = bus.call(node, "org.a11y.atspi.Accessible", "GetState");
        const auto words = qdbus_cast<QList<quint32>>(reply.arguments().value(0));
        return words.size() == 2 ? words[0] | quint64(words[1]) << 32 : 0;
    }
    static bool has(quint64 states, State state) { return states >> state & 1; }

    // Each control that is to be reached tells its role and name, and the states that belong to its role.
    void walk(const AccessibilityBus::Node &node, const QString &path, int depth)
    {
        const quint64 now = states(node);
        if (depth > 0 && !has(now, Showing))
            return;
        const QString role = bus.role(node), name = bus.name(node);
        const QString here = path + " > " + role + " '" + name + '\'';
        if (has(now, Focusable)) {
            ++roles[role];
            // Besides what is chosen in it: of items the toolkit says so in every list.
            if (has(now, Focused) && role != "list item") {
                EXPECT_TRUE(here.startsWith(focused))
                    << here.toStdString() << " beside " << focused.toStdString();
                focused = here;
            }
            EXPECT_FALSE(QStringList({"", "filler", "unknown"}).contains(role)) << here.toStdString();
            EXPECT_FALSE(name.trimmed().isEmpty()) << here.toStdString();
            EXPECT_EQ(has(now, Enabled), has(now, Sensitive)) << here.toStdString();
            if (role == "list item" || role == "page tab")
                EXPECT_TRUE(has(now, Selectable)) << here.toStdString();
            if (role == "text")
                EXPECT_TRUE(has(now, Editable)) << here.toStdString();
            chosen[role] += has(now, Checked) || has(now, Selected);
        }
        for (const AccessibilityBus::Node &child : bus.children(node))
            walk(child, here, depth + 1);
    }
    void walkWindow(const QString &title)
    {
        roles.clear();
        chosen.clear();
        focused.clear();
        std::optional<AccessibilityBus::Node> window;
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                const auto lumenpost = bus.find(bus.root(), "lumenpost", 1);
                window = lumenpost ? bus.find(*lumenpost, title, 1) : std::nullopt;
                return window && has(states(*window), Showing);
            },
            10000))
            << title.toStdString();
        QTest::qWait(500); // what it shows is there
        walk(window.value_or(bus.root()), QString(), 0);
        EXPECT_FALSE(focused.isEmpty()) << "nothing has the keyboard";
    }

    AccessibilityBus bus;
    QMap<QString, int> roles;  // of the controls
    QMap<QString, int> chosen; // how many of them are on
    QString focused;           // the innermost
};

TEST_F(SpokenWindows, TellRoleNameAndStateOfEachControl)
{
    ASSERT_TRUE(bus.isConnected());
    QDir().mkpath(home.path("Pictures/Lumenpost"));
    QImage picture(640, 400, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    ASSERT_TRUE(picture.save(home.path("Pictures/Lumenpost/Quay.png")));
    start();

    key("super+shift+l");
    walkWindow("Library");
    EXPECT_GE(roles["list item"], 8) << "places and cards";
    EXPECT_EQ(roles["text"], 1);
    EXPECT_GE(roles["push button"], 3);

    key("Home");
    key("Return");
    walkWindow("Quay");
    EXPECT_GE(roles["radio button"], 17) << "tools";
    EXPECT_GE(chosen["radio button"], 1);
    EXPECT_EQ(roles["canvas"], 1);

    key("super+shift+m");
    walkWindow("Lumenpost");
    EXPECT_EQ(chosen["check box"], 1) << "the captures open in the editor";
    key("ctrl+comma");
    walkWindow("Lumenpost Settings");
    EXPECT_EQ(roles["radio button"], 6) << "pages";
    EXPECT_EQ(chosen["radio button"], 1);
    EXPECT_GE(roles["check box"], 4);
}
