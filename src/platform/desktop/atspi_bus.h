#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDeadlineTimer>
#include <QHash>
#include <QList>
#include <QRect>
#include <QString>
#include <optional>

// Where an object of the accessibility bus lives.
struct AtspiObject {
    QString service;
    QString path;

    bool isNull() const { return path.isEmpty() || path == QLatin1String("/org/a11y/atspi/null"); }
    bool operator==(const AtspiObject &) const = default;
};

// The roles of the accessibility bus that mean something here, with the numbers that it sends.
enum class AtspiRole : quint32 {
    CheckBox = 7,
    CheckMenuItem = 8,
    ColumnHeader = 10,
    ComboBox = 11,
    DateEditor = 12,
    DesktopIcon = 13,
    Dial = 15,
    Dialog = 16,
    Filler = 20,
    Frame = 23,
    Icon = 26,
    Image = 27,
    Label = 29,
    LayeredPane = 30,
    List = 31,
    ListItem = 32,
    Menu = 33,
    MenuBar = 34,
    MenuItem = 35,
    PageTab = 37,
    PageTabList = 38,
    Panel = 39,
    PasswordText = 40,
    PopupMenu = 41,
    PushButton = 43,
    RadioButton = 44,
    RadioMenuItem = 45,
    RootPane = 46,
    RowHeader = 47,
    ScrollPane = 49,
    Slider = 51,
    SpinButton = 52,
    SplitPane = 53,
    TableCell = 56,
    TableColumnHeader = 57,
    TableRowHeader = 58,
    TearoffMenuItem = 59,
    Terminal = 60,
    Text = 61,
    ToggleButton = 62,
    ToolBar = 63,
    Viewport = 68,
    Window = 69,
    Paragraph = 73,
    Application = 75,
    Autocomplete = 76,
    EditBar = 77,
    Entry = 79,
    Caption = 81,
    DocumentFrame = 82,
    Heading = 83,
    Link = 88,
    TableRow = 90,
    TreeItem = 91,
    DocumentSpreadsheet = 92,
    DocumentPresentation = 93,
    DocumentText = 94,
    DocumentWeb = 95,
    DocumentEmail = 96,
    ListBox = 98,
    Grouping = 99,
    Static = 116,
    PushButtonMenu = 129,
    Switch = 130,
};

// The bits of the states that are asked for.
enum class AtspiState {
    Editable = 7,
    Expanded = 10,
    MultiLine = 17,
    Selected = 23,
    Showing = 25,
    HasPopup = 42,
};

enum class AtspiCoordinates : quint32 { Screen = 0, Window = 1 };

// Questions to the accessibility bus. All of one inquiry share a deadline; what isn't answered by then is as
// if it didn't exist. For one thread at a time, and never the one with the event loop: calls wait.
class AtspiBus {
public:
    ~AtspiBus();
    // Connects at the first call, and again when the bus went away. False when there is none.
    bool connect();
    // Before each inquiry.
    void setDeadline(int milliseconds) { m_deadline.setRemainingTime(milliseconds); }
    bool isLate() const { return m_deadline.hasExpired(); }

    QList<AtspiObject> applications();
    qint64 pid(const AtspiObject &application);
    QString toolkit(const AtspiObject &application);

    // What an object says of itself, in one exchange; empty where it doesn't answer.
    struct Card {
        AtspiObject object;
        AtspiObject parent;
        AtspiRole role = AtspiRole(0);
        quint64 states = 0; // none of an object that doesn't answer
        QString name;
        QString description;
        QHash<QString, QString> attributes;
    };
    Card card(const AtspiObject &object);

    QList<AtspiObject> children(const AtspiObject &object);
    AtspiObject parent(const AtspiObject &object);
    AtspiRole role(const AtspiObject &object);
    quint64 states(const AtspiObject &object);
    QString name(const AtspiObject &object);
    QHash<QString, QString> attributes(const AtspiObject &object);
    // What the labels say that belong to it.
    QString labelledBy(const AtspiObject &object);
    // What it is the label of.
    AtspiObject labelFor(const AtspiObject &object);
    // Empty if it takes no place.
    QRect extents(const AtspiObject &object, AtspiCoordinates coordinates);
    AtspiObject childAt(const AtspiObject &object, QPoint point, AtspiCoordinates coordinates);

    // All of it in one exchange, for many objects at once.
    struct Look {
        AtspiObject object;
        AtspiRole role = AtspiRole(0);
        quint64 states = 0;
        QRect extents; // on the screen
        QList<AtspiObject> children;
    };
    QList<Look> lookAt(const QList<AtspiObject> &objects);

    static bool has(quint64 states, AtspiState state) { return states >> int(state) & 1; }

private:
    QDBusMessage message(const AtspiObject &object, const char *interface, const char *method,
                         const QVariantList &arguments) const;
    QList<QDBusPendingCall> sendAll(const QList<AtspiObject> &objects, const char *interface,
                                    const char *method, const QVariantList &arguments = {});
    QDBusMessage call(const AtspiObject &object, const char *interface, const char *method,
                      const QVariantList &arguments = {});
    QList<AtspiObject> related(const AtspiObject &object, quint32 relation);
    QVariant property(const AtspiObject &object, const char *interface, const char *name);

    std::optional<QDBusConnection> m_bus;
    QDeadlineTimer m_deadline;
    QHash<QString, qint64> m_pids; // by service
    QHash<QString, QString> m_toolkits;
};
