#include "shell/settings_page.h"

#include "shell/pieces.h"
#include "ui/style_painting.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr int kRowInset = 14; // of a row's words from the card's edge

} // namespace

SettingsRow::SettingsRow(const QString &title, const QString &note, QWidget *control, QWidget *parent)
    : QWidget(parent), m_title(title), m_words(title), m_note(new NoteLabel(note)), m_problem(new NoteLabel({}))
{
    auto *label = new QLabel(title);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Theme::font(Theme::Type::Body));
    label->setWordWrap(true);
    m_note->setVisible(!note.isEmpty());
    m_problem->setWarning(true);
    m_problem->hide();
    auto *words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(label);
    words->addWidget(m_note);
    words->addWidget(m_problem);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(kRowInset, Theme::Space::inside, kRowInset, Theme::Space::inside);
    line->setSpacing(Theme::Space::group);
    line->addLayout(words, 1);
    if (control) {
        line->addWidget(control, 0, Qt::AlignVCenter | Qt::AlignRight);
        if (control->accessibleName().isEmpty())
            control->setAccessibleName(title);
        control->setAccessibleDescription(note);
        label->setBuddy(control);
    }
}

SettingsRow::SettingsRow(QWidget *content, const QString &words, QWidget *parent) : QWidget(parent), m_words(words)
{
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(kRowInset, Theme::Space::group, kRowInset, Theme::Space::group);
    line->addWidget(content);
}

void SettingsRow::setNote(const QString &note)
{
    if (!m_note)
        return;
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
}

void SettingsRow::setProblem(const QString &problem)
{
    if (!m_problem)
        return;
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
}

bool SettingsRow::matches(const QStringList &words) const
{
    const QString all = m_words + QLatin1Char(' ') + (m_note ? m_note->text() : QString());
    return std::ranges::all_of(words,
                               [&all](const QString &word) { return all.contains(word, Qt::CaseInsensitive); });
}

// The ground of a section's rows, with a hairline between them.
class SettingsPage::Card : public QWidget {
public:
    Card() : rows(new QVBoxLayout(this))
    {
        rows->setContentsMargins(0, 2, 0, 2);
        rows->setSpacing(0);
    }

    QVBoxLayout *rows;

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        StylePainting::fillRounded(&painter, rect(), Theme::Radius::card, t.surface, t.hairline);
        bool isFirst = true;
        for (int i = 0; i < rows->count(); ++i) {
            const QWidget *row = rows->itemAt(i)->widget();
            if (!row || row->isHidden())
                continue;
            if (!std::exchange(isFirst, false))
                Theme::fillHairline(painter, QRectF(kRowInset, row->y(), width() - kRowInset, 1), t.hairline);
        }
    }
};

SettingsPage::SettingsPage(const QString &title, QWidget *parent)
    : QWidget(parent), m_title(title), m_heading(new QLabel(title)), m_column(new QVBoxLayout(this))
{
    m_heading->setFont(Theme::font(Theme::Type::Heading, QFont::DemiBold));
    m_heading->setTextFormat(Qt::PlainText);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(Theme::Space::inside);
    m_column->addWidget(m_heading);
}

void SettingsPage::beginSection(const QString &heading)
{
    Section section;
    if (!m_sections.isEmpty())
        m_column->addSpacing(Theme::Space::inside);
    if (!heading.isEmpty()) {
        section.heading = new QLabel(heading);
        section.heading->setTextFormat(Qt::PlainText);
        section.heading->setFont(Theme::font(Theme::Type::Body, QFont::DemiBold));
        m_column->addWidget(section.heading);
    }
    section.card = new Card;
    section.card->hide(); // until there is a row
    m_column->addWidget(section.card);
    m_sections.append(section);
}

SettingsPage::Section &SettingsPage::section()
{
    if (m_sections.isEmpty())
        beginSection();
    return m_sections.last();
}

SettingsRow *SettingsPage::append(SettingsRow *row)
{
    section().card->rows->addWidget(row);
    section().card->show();
    section().rows.append(row);
    return row;
}

SettingsRow *SettingsPage::add(const QString &title, const QString &note, QWidget *control)
{
    return append(new SettingsRow(title, note, control));
}

SettingsRow *SettingsPage::addWide(QWidget *content, const QString &words)
{
    return append(new SettingsRow(content, words));
}

SettingsRow *SettingsPage::addToggle(const QString &title, const QString &note, const std::function<bool()> &isOn,
                                     const std::function<void(bool)> &set)
{
    auto *toggle = new ToggleSwitch;
    toggle->setChecked(isOn());
    connect(toggle, &QAbstractButton::toggled, this, set);
    onRefresh([toggle, isOn] {
        const QSignalBlocker blocker(toggle);
        toggle->setChecked(isOn());
        toggle->update();
    });
    return add(title, note, toggle);
}

void SettingsPage::addNote(const QString &text)
{
    auto *note = new NoteLabel(text);
    note->setContentsMargins(kRowInset, 0, kRowInset, 0);
    section().notes.append(note);
    m_column->addWidget(note);
}

void SettingsPage::remove(SettingsRow *row)
{
    for (Section &section : m_sections) {
        if (section.rows.removeOne(row))
            section.card->setVisible(!section.rows.isEmpty());
    }
    row->hide();
    row->deleteLater();
}

void SettingsPage::refresh()
{
    for (const auto &refresh : std::as_const(m_refreshes))
        refresh();
}

bool SettingsPage::filter(const QStringList &words)
{
    bool isAnyLeft = false;
    for (const Section &section : std::as_const(m_sections)) {
        // A heading that is found stands for all that is under it.
        QStringList open = words;
        if (section.heading)
            open.removeIf([&section](const QString &word) {
                return section.heading->text().contains(word, Qt::CaseInsensitive);
            });
        bool hasRows = false;
        for (SettingsRow *row : section.rows) {
            const bool isFound = row->matches(open);
            row->setVisible(isFound);
            hasRows = hasRows || isFound;
        }
        section.card->setVisible(hasRows);
        if (section.heading)
            section.heading->setVisible(hasRows);
        for (NoteLabel *note : section.notes)
            note->setVisible(hasRows && words.isEmpty());
        isAnyLeft = isAnyLeft || hasRows;
    }
    return isAnyLeft || words.isEmpty();
}
