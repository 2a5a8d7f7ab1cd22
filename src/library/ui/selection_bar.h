#pragma once

#include "library/ui/window_parts.h"

#include <vector>

class LibraryActions;
class LibraryModel;

// What can be done with all that is selected; hidden while nothing is. Words give way to symbols where there
// is no room for them.
class SelectionBar : public WindowParts::Surface {
    Q_OBJECT
public:
    // Both outlive it.
    SelectionBar(LibraryModel &model, LibraryActions &actions, QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

private:
    void update();
    void fitWords();
    BarButton *add(const char *symbol, const QString &text, const QString &tip);

    LibraryModel &m_model;
    LibraryActions &m_actions;
    QLabel *m_count;
    std::vector<BarButton *> m_buttons;
};
