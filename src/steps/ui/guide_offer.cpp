#include "steps/ui/guide_offer.h"

#include "steps/ui/texts.h"
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
constexpr qsizetype kListed = 6;

QLabel *makeLine(const QString &text, Theme::Type type, QFont::Weight weight = QFont::Normal)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Theme::font(type, weight));
    label->setWordWrap(true);
    return label;
}

} // namespace

GuideOffer::GuideOffer(const QList<StepsSession::Unfinished> &guides)
{
    setObjectName(QStringLiteral("guideOffer"));
    setWindowTitle(StepsUiTexts::tr("Unfinished Guides"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedWidth(kWidth);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::section, Theme::Space::section, Theme::Space::section,
                               Theme::Space::margin);
    column->setSpacing(Theme::Space::inside);
    column->addWidget(makeLine(StepsUiTexts::tr("%n guide(s) were not finished", nullptr, int(guides.size())),
                               Theme::Type::Title, QFont::DemiBold));
    column->addWidget(makeLine(StepsUiTexts::tr("You can go on where you left off."), Theme::Type::Body));
    for (const StepsSession::Unfinished &guide : guides.first(std::min(guides.size(), kListed))) {
        const QString title =
            guide.title.trimmed().isEmpty() ? StepsUiTexts::tr("How-To Guide") : guide.title;
        auto *entry = makeLine(StepsUiTexts::tr("%1, %2, %3")
                                   .arg(title, StepsUiTexts::tr("%n step(s)", nullptr, int(guide.count)),
                                        QLocale().toString(guide.date, QLocale::ShortFormat)),
                               Theme::Type::Control);
        entry->setForegroundRole(QPalette::PlaceholderText);
        column->addWidget(entry);
    }
    makeButtons();
}

void GuideOffer::makeButtons()
{
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, Theme::Space::group, 0, 0);
    auto *discard = new QPushButton(StepsUiTexts::tr("Discard"));
    discard->setObjectName(QStringLiteral("discardGuides"));
    auto *later = new QPushButton(StepsUiTexts::tr("Later"));
    auto *open = new QPushButton(StepsUiTexts::tr("Open"));
    open->setObjectName(QStringLiteral("openGuides"));
    open->setDefault(true);
    row->addWidget(discard);
    row->addStretch();
    row->addWidget(later);
    row->addWidget(open);
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
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

void GuideOffer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::tokens(this).window);
}

void GuideOffer::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
