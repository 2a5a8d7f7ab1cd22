#pragma once

#include "ui/controls.h"
#include "ui/theme.h"

#include <QFont>
#include <QString>
#include <QWidget>

class QComboBox;
class QLabel;

// The small pieces that the window of the Library and its sheets are made of.
namespace WindowParts {

// A part of the window with the colour of bars and a line at one of its edges.
class Surface : public QWidget {
    Q_OBJECT
public:
    enum class Edge { Left, Right, Bottom, Top };
    explicit Surface(Edge edge, QWidget *parent = nullptr) : QWidget(parent), m_edge(edge) {}

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Edge m_edge;
};

// Plain text, on one line unless it is told to wrap.
QLabel *label(Theme::Type type, QFont::Weight weight = QFont::Normal, bool isSecondary = false);
// Wrapped words in the secondary colour.
QLabel *note(const QString &text);
BarButton *button(const QString &symbol, const QString &text, const QString &tip, BarButton::Label where);
// Without the wheel, which is for scrolling.
QComboBox *picker(const QString &name, const QStringList &choices);

QString bytesText(qint64 bytes);

} // namespace WindowParts
