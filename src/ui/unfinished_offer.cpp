#include "ui/unfinished_offer.h"

#include "ui/texts.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 420;
constexpr qsizetype kListed = 6;

QLabel *line(const QString &text, Theme::Type type, QFont::Weight weight = QFont::Normal)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Theme::font(type, weight));
    label->setWordWrap(true);
    return label;
}

} // namespace

UnfinishedOffer::UnfinishedOffer(const QString &title, const QString &summary, const QStringList &entries)
{
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedWidth(kWidth);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::section, Theme::Space::section, Theme::Space::section,
                               Theme::Space::margin);
    column->setSpacing(Theme::Space::inside);
    column->addWidget(line(summary, Theme::Type::Title, QFont::DemiBold));
    column->addWidget(line(UiTexts::tr("You can go on where you left off."), Theme::Type::Body));
    for (const QString &entry : entries.first(std::min(entries.size(), kListed))) {
        QLabel *shown = line(entry, Theme::Type::Control);
        shown->setForegroundRole(QPalette::PlaceholderText);
        column->addWidget(shown);
    }
    addButtons(*column);
}

void UnfinishedOffer::addButtons(QVBoxLayout &column)
{
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, Theme::Space::group, 0, 0);
    auto *discard = new QPushButton(UiTexts::tr("Discard"));
    discard->setObjectName(QStringLiteral("discardUnfinished"));
    auto *later = new QPushButton(UiTexts::tr("Later"));
    auto *open = new QPushButton(UiTexts::tr("Open"));
    open->setObjectName(QStringLiteral("openUnfinished"));
    open->setDefault(true);
    row->addWidget(discard);
    row->addStretch();
    row->addWidget(later);
    row->addWidget(open);
    column.addLayout(row);
    connect(discard, &QAbstractButton::clicked, this, [this] {
        Q_EMIT discarded();
        close();
    });
    connect(later, &QAbstractButton::clicked, this, &QWidget::close);
    connect(open, &QAbstractButton::clicked, this, [this] {
        Q_EMIT opened();
        close();
    });
    open->setFocus();
}

void UnfinishedOffer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::tokens(this).window);
}

void UnfinishedOffer::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
