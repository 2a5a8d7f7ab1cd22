#include "editor/draft_offer.h"

#include "editor/texts.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 420;
constexpr int kListed = 6;

QLabel *line(const QString &text, Theme::Type type, QFont::Weight weight = QFont::Normal)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Theme::font(type, weight));
    label->setWordWrap(true);
    return label;
}

} // namespace

DraftOffer::DraftOffer(const QList<Draft::Entry> &drafts)
{
    setObjectName(QStringLiteral("draftOffer"));
    setWindowTitle(EditorTexts::tr("Unsaved Pictures"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedWidth(kWidth);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::section, Theme::Space::section, Theme::Space::section,
                               Theme::Space::margin);
    column->setSpacing(Theme::Space::inside);
    const int count = static_cast<int>(drafts.size());
    column->addWidget(line(EditorTexts::tr("%n picture(s) were never saved", nullptr, count),
                           Theme::Type::Title, QFont::DemiBold));
    column->addWidget(line(EditorTexts::tr("You can go on where you left off."), Theme::Type::Body));
    for (const Draft::Entry &draft : drafts.first(std::min(count, kListed))) {
        const QString date = QLocale().toString(draft.date, QLocale::ShortFormat);
        auto *entry = line(EditorTexts::tr("%1, %2").arg(draft.title, date), Theme::Type::Control);
        entry->setForegroundRole(QPalette::PlaceholderText);
        column->addWidget(entry);
    }
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, Theme::Space::group, 0, 0);
    auto *discard = new QPushButton(EditorTexts::tr("Discard"));
    discard->setObjectName(QStringLiteral("discardDrafts"));
    auto *later = new QPushButton(EditorTexts::tr("Later"));
    auto *open = new QPushButton(EditorTexts::tr("Open"));
    open->setObjectName(QStringLiteral("openDrafts"));
    open->setDefault(true);
    row->addWidget(discard);
    row->addStretch();
    row->addWidget(later);
    row->addWidget(open);
    column->addLayout(row);
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

void DraftOffer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::tokens(this).window);
}

void DraftOffer::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
