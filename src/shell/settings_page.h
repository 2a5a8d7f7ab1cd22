#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>

class NoteLabel;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;
class ToggleSwitch;

// One row of a settings page: a title with a note under it, and its control at the right.
class SettingsRow : public QWidget {
    Q_OBJECT
public:
    SettingsRow(const QString &title, const QString &note, QWidget *control, QWidget *parent = nullptr);
    // A row that is one wide widget, found by these words.
    SettingsRow(QWidget *content, const QString &words, QWidget *parent = nullptr);

    const QString &title() const { return m_title; }
    void setNote(const QString &note);
    // A line that tells what is wrong with the row; empty for nothing.
    void setProblem(const QString &problem);
    bool matches(const QStringList &words) const;

private:
    QString m_title;
    QString m_words;
    NoteLabel *m_note = nullptr;
    NoteLabel *m_problem = nullptr;
};

// A page of the settings: sections, each a card of rows. A search hides what it doesn't find.
class SettingsPage : public QWidget {
    Q_OBJECT
public:
    explicit SettingsPage(const QString &title, QWidget *parent = nullptr);

    const QString &title() const { return m_title; }
    // What follows stands under this heading; an empty one parts groups without words.
    void beginSection(const QString &heading = {});
    SettingsRow *add(const QString &title, const QString &note, QWidget *control);
    SettingsRow *addWide(QWidget *content, const QString &words);
    // A switch for a value that is read again at each refresh.
    SettingsRow *addToggle(const QString &title, const QString &note, const std::function<bool()> &isOn,
                           const std::function<void(bool)> &set);
    // Words under the last card.
    void addNote(const QString &text);
    void remove(SettingsRow *row);
    // Called when what the page shows may have changed elsewhere.
    void onRefresh(std::function<void()> refresh) { m_refreshes.append(std::move(refresh)); }
    void refresh();
    // Shows the rows that hold each of the words, all for none; true when some are left.
    bool filter(const QStringList &words);

private:
    class Card;
    struct Section {
        QLabel *heading = nullptr;
        Card *card = nullptr;
        QList<NoteLabel *> notes = {};
        QList<SettingsRow *> rows = {};
    };
    Section &section();
    SettingsRow *append(SettingsRow *row);

    QString m_title;
    QLabel *m_heading;
    QVBoxLayout *m_column;
    QList<Section> m_sections;
    QList<std::function<void()>> m_refreshes;
};
