#include "library/ui/selection_bar.h"

#include "library/model/library_model.h"
#include "library/ui/library_actions.h"
#include "library/ui/texts.h"
#include "ui/tips.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>

SelectionBar::SelectionBar(LibraryModel &model, LibraryActions &actions, QWidget *parent)
    : Surface(Edge::Top, parent),
      m_model(model),
      m_actions(actions),
      m_count(WindowParts::label(Theme::Type::Body, QFont::Medium))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(20, 7, Theme::Space::group, 6);
    row->setSpacing(0);
    row->addWidget(m_count);
    row->addStretch(1);
    const auto opens = [this](BarButton *button, LibrarySheet::Kind kind) {
        connect(button, &QAbstractButton::clicked, this,
                [this, kind] { m_actions.openSheet(kind, m_model.selectedPaths()); });
    };
    using Kind = LibrarySheet::Kind;
    opens(add("square.and.arrow.up.on.square", LibraryUiTexts::tr("Export"),
              LibraryUiTexts::tr("Save copies as PNG, JPG or HEIC, optionally resized.")),
          Kind::Export);
    opens(add("doc.richtext", LibraryUiTexts::tr("PDF"),
              LibraryUiTexts::tr("Make a PDF with one page per capture, with a title and captions.")),
          Kind::Pdf);
    opens(add("rectangle.split.2x1", LibraryUiTexts::tr("Combine"),
              LibraryUiTexts::tr("Join captures side by side, stacked or in a grid.")),
          Kind::Combine);
    opens(
        add("list.number", LibraryUiTexts::tr("Guide"),
            LibraryUiTexts::tr("Make one tall step-by-step guide image with a title, numbers and captions.")),
        Kind::Guide);
    opens(add("character.cursor.ibeam", LibraryUiTexts::tr("Rename"),
              LibraryUiTexts::tr("Rename them all with a pattern like “Bug {n}”.")),
          Kind::Rename);
    BarButton *collection = add("folder.badge.plus", LibraryUiTexts::tr("Collection"),
                                LibraryUiTexts::tr("Add them to a collection, or start a new one."));
    auto *menu = new QMenu(collection);
    collection->setMenu(menu);
    connect(collection, &BarButton::menuAboutToOpen, this, [this, menu] {
        menu->clear();
        m_actions.fillCollectionMenu(menu, m_model.selectedPaths());
    });
    BarButton *trash =
        add("trash", LibraryUiTexts::tr("Trash"), LibraryUiTexts::tr("Move them to the Trash."));
    connect(trash, &QAbstractButton::clicked, this, [this] { m_actions.trash(m_model.selectedPaths()); });
    BarButton *deselect = add("xmark.circle", LibraryUiTexts::tr("Deselect"), {});
    TipCenter::describe(deselect, {LibraryUiTexts::tr("Deselect"), {}, LibraryUiTexts::tr("Esc")});
    connect(deselect, &QAbstractButton::clicked, this, [this] { m_model.setSelection({}); });
    connect(&model, &LibraryModel::selectionChanged, this, &SelectionBar::update);
    update();
}

BarButton *SelectionBar::add(const char *symbol, const QString &text, const QString &tip)
{
    BarButton *made = WindowParts::button(QLatin1String(symbol), text, tip, BarButton::Label::Beside);
    layout()->addWidget(made);
    m_buttons.push_back(made);
    return made;
}

void SelectionBar::update()
{
    const auto count = static_cast<int>(m_model.selection().size());
    setVisible(count > 0);
    fitWords();
}

void SelectionBar::resizeEvent(QResizeEvent *)
{
    fitWords();
}

void SelectionBar::fitWords()
{
    const auto count = static_cast<int>(m_model.selection().size());
    m_count->setText(LibraryUiTexts::tr("%n selected", nullptr, count));
    const auto widthWith = [this](BarButton::Label label) {
        int sum = m_count->sizeHint().width() + 32 + Theme::Space::group;
        for (BarButton *each : m_buttons) {
            each->setLabel(label);
            sum += each->sizeHint().width();
        }
        return sum;
    };
    if (widthWith(BarButton::Label::Beside) > width() && widthWith(BarButton::Label::None) > width())
        m_count->setText(QLocale().toString(count));
}
