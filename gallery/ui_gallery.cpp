#include "ui/appearance.h"
#include "ui/controls.h"
#include "ui/hud_panel.h"
#include "ui/sheet.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"
#include "ui/toast.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <QVBoxLayout>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Appearance appearance(application);
    NoticeBoard board;
    ToastPresenter toasts(board);
    TipCenter tips(nullptr);

    QWidget window;
    window.setWindowTitle("Controls");
    auto *column = new QVBoxLayout(&window);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(16);
    const auto row = [column](std::initializer_list<QWidget *> widgets) {
        auto *line = new QHBoxLayout;
        line->setSpacing(Theme::Space::group);
        for (QWidget *widget : widgets)
            line->addWidget(widget);
        line->addStretch();
        column->addLayout(line);
    };

    auto *active = new BarButton("arrow.up.right", "Arrow", BarButton::Label::Under);
    active->setCheckable(true);
    active->setChecked(true);
    auto *plain = new BarButton("rectangle", "Box", BarButton::Label::Under);
    auto *off = new BarButton("arrow.uturn.backward", "Undo", BarButton::Label::Beside);
    off->setEnabled(false);
    auto *effects = new BarButton("wand.and.stars", "Effects", BarButton::Label::Beside);
    auto *menu = new QMenu;
    menu->addAction(symbolIcon("doc.on.doc"), "Copy\tCtrl+C");
    menu->addAction(symbolIcon("square.and.arrow.down"), "Save\tCtrl+S")->setEnabled(false);
    menu->addSeparator();
    QAction *border = menu->addAction("Border");
    border->setCheckable(true);
    border->setChecked(true);
    menu->addMenu("Backdrop Style")->addAction("Indigo");
    effects->setMenu(menu);
    tips.attach(effects,
                {"Effects", "Add a gradient backdrop, border, drop shadow or rounded corners.", "⌘E"});
    row({active, plain, new Hairline(Qt::Vertical), off, effects});

    auto *picker = new SegmentedPicker;
    picker->setSegments({{"All-in-One", "viewfinder"}, {"Screen", "display"}, {"Video", "video"}});
    auto *chipOn = new Chip("Include cursor", "cursorarrow");
    chipOn->setChecked(true);
    row({picker, chipOn, new Chip("Delay", "timer")});

    auto *red = new Swatch(Qt::red, "Red");
    red->setChecked(true);
    row({red, new Swatch(Qt::black, "Black"), new Swatch(Qt::white, "White"),
         new ValueSlider("Width", 2, 30)});

    auto *primary = new QPushButton("Save");
    primary->setDefault(true);
    auto *disabled = new QPushButton("Delete");
    disabled->setEnabled(false);
    auto *field = new QLineEdit;
    field->setPlaceholderText("Search your captures");
    auto *choice = new QComboBox;
    choice->addItems({"Newest First", "Oldest First"});
    row({primary, new QPushButton("Cancel"), disabled, field, choice});

    auto *on = new QCheckBox("Launch at login");
    on->setChecked(true);
    auto *round = new QRadioButton("PNG");
    round->setChecked(true);
    auto *progress = new QProgressBar;
    progress->setTextVisible(false);
    progress->setFixedSize(160, 4);
    progress->setValue(40);
    row({on, new QCheckBox("Shutter sound"), round, new QRadioButton("JPG"), progress, new Spinner(18)});

    auto *list = new QListWidget;
    list->addItems({"Capture 2026-01-02", "Invoice", "Settings dialog", "A", "B", "C", "D", "E", "F"});
    list->setCurrentRow(1);
    list->setFixedHeight(110);
    column->addWidget(list);
    column->addWidget(
        new EmptyState("photo", "No captures yet", "Press Ctrl+Shift+C to take the first one."));

    window.resize(760, 680);
    window.show();
    auto panel = HUDPanel::make({900, 100, 300, 100}, {0, 0, 1920, 1040}, new QLabel("12 frames"));
    panel->show();
    if (application.arguments().contains("--menu"))
        effects->openMenu();
    if (application.arguments().contains("--sheet")) {
        auto *sheet = new Sheet(&window, "exclamationmark.triangle.fill", "Something went wrong");
        sheet->addText("The picture could not be written, because the disk is full.");
        sheet->addButton("Open Settings");
        sheet->addPrimaryButton("OK");
        sheet->open();
    }
    board.post("Redacted 2 areas — review them, ⌘Z to undo", "eye.slash.fill");
    return application.exec();
}
