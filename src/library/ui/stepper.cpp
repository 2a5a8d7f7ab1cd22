#include "library/ui/stepper.h"

#include "library/ui/texts.h"
#include "library/ui/window_parts.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLineEdit>

Stepper::Stepper(int minimum, int maximum, int value, QWidget *parent)
    : QWidget(parent), m_minimum(minimum), m_maximum(maximum), m_value(value), m_field(new QLineEdit)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(Theme::Space::unit);
    m_field->setValidator(new QIntValidator(minimum, maximum, m_field));
    m_field->setText(QString::number(value));
    m_field->installEventFilter(this);
    row->addWidget(m_field, 1);
    const auto add = [&](const char *symbol, const QString &name, int step) {
        BarButton *made = WindowParts::button(QLatin1String(symbol), name, {}, BarButton::Label::None);
        connect(made, &QAbstractButton::clicked, this, [this, step] { setValue(m_value + step); });
        row->addWidget(made);
    };
    add("minus", LibraryUiTexts::tr("Less"), -1);
    add("plus", LibraryUiTexts::tr("More"), 1);
    setFocusProxy(m_field);
    connect(m_field, &QLineEdit::textEdited, this, [this](const QString &text) {
        bool isNumber = false;
        const int typed = text.toInt(&isNumber);
        if (isNumber && typed >= m_minimum && typed <= m_maximum && typed != m_value)
            Q_EMIT changed(m_value = typed);
    });
}

void Stepper::setValue(int value)
{
    value = qBound(m_minimum, value, m_maximum);
    m_field->setText(QString::number(value));
    if (value != m_value)
        Q_EMIT changed(m_value = value);
}

bool Stepper::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            setValue(m_value + (key == Qt::Key_Up ? 1 : -1));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
