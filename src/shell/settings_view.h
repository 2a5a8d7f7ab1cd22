#pragma once

#include "shell/settings_parts.h"

#include <QList>
#include <QWidget>
#include <array>

class EmptyState;
class QAbstractButton;
class QButtonGroup;
class QLineEdit;
class QScrollArea;
class QTimer;
class QVBoxLayout;
class SettingsPage;

// The content of the settings window: the pages at the left with a search field above them, the chosen page at the
// right. What is changed is stored at once; what changes elsewhere is shown at once. Which page shows is
// AppSettings::settingsTab.
class SettingsView : public QWidget {
    Q_OBJECT
public:
    explicit SettingsView(const SettingsParts &parts, QWidget *parent = nullptr);

    void search(const QString &text);
    // Made when it is first shown or searched.
    SettingsPage *page(int index);
    static constexpr int kPageCount = 6;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeSidebar();
    void showTab();
    void arrange();

    SettingsParts m_parts;
    QLineEdit *m_search;
    QButtonGroup *m_tabs;
    QScrollArea *m_scroll;
    QVBoxLayout *m_column;
    EmptyState *m_nothing;
    QTimer *m_refresh;
    std::array<SettingsPage *, kPageCount> m_pages{};
};
