#include "editor/draft_bar.h"

#include "editor/texts.h"
#include "ui/controls.h"
#include "ui/roles.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace {

constexpr int kHeight = 44;

class Icon : public QWidget {
public:
    Icon() { setFixedSize(Theme::Size::rowIcon, Theme::Size::rowIcon); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        drawSymbol(painter, rect(), QStringLiteral("arrow.counterclockwise"), Theme::tokens(this).accentText);
    }
};

} // namespace

DraftBar::DraftBar(Unsaved what, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("draftBar"));
    setFixedHeight(kHeight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Theme::Space::margin, 0, Theme::Space::group, 1);
    row->setSpacing(Theme::Space::inside);
    auto *words = new QLabel(what == Unsaved::Edits
                                 ? EditorTexts::tr("Your unsaved edits are back. Save to keep them.")
                                 : EditorTexts::tr("Your unsaved picture is back. Save to keep it."));
    setAccessibleName(words->text());
    Roles::set(this, QAccessible::AlertMessage);
    words->setFont(Theme::font(Theme::Type::Body));
    auto *discard = new QPushButton(what == Unsaved::Edits ? EditorTexts::tr("Discard Edits")
                                                           : EditorTexts::tr("Discard Picture"));
    discard->setObjectName(QStringLiteral("discardDraft"));
    auto *dismiss = new BarButton(QStringLiteral("xmark"), EditorTexts::tr("Close"), BarButton::Label::None);
    dismiss->setObjectName(QStringLiteral("keepDraft"));
    row->addWidget(new Icon);
    row->addWidget(words);
    row->addStretch();
    row->addWidget(discard);
    row->addWidget(dismiss);
    connect(discard, &QAbstractButton::clicked, this, [this] {
        Q_EMIT discarded();
        deleteLater();
    });
    connect(dismiss, &QAbstractButton::clicked, this, &QObject::deleteLater);
}

void DraftBar::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.fillRect(rect(), t.window);
    painter.fillRect(rect(), t.accentWash);
    Theme::fillHairline(painter, QRectF(0, height() - 1, width(), 1), t.hairline);
}
