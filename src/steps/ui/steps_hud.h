#pragma once

#include <QWidget>
#include <memory>

class HUDPanel;
class QPushButton;
class StepsRecorder;
class SymbolLabel;
struct Screen;

// The row in the floating panel of a steps session: what was taken last, and "Add Step", "Pause", "Done" and
// "Cancel".
class StepsHUDView : public QWidget {
    Q_OBJECT
public:
    explicit StepsHUDView(StepsRecorder &recorder, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();
    QPushButton *addButton(const QString &text, const QString &symbol, const QString &help);

    StepsRecorder &m_recorder;
    SymbolLabel *m_symbol;
    QWidget *m_lines; // the room for the two lines of text
    QString m_first;
    QString m_second;
    QPushButton *m_pause;
    QPushButton *m_done;
};

// The panel of a session, near the bottom of a screen. Not shown yet.
std::unique_ptr<HUDPanel> makeStepsHUD(StepsRecorder &recorder, const Screen &screen);
