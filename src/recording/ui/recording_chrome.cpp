#include "recording/ui/recording_chrome.h"

#include "artwork/symbols.h"
#include "recording/recording_extras.h"
#include "recording/ui/texts.h"
#include "ui/controls.h"
#include "ui/region_frame_window.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <cmath>

namespace {

constexpr double kFromBottom = 90; // of a screen that is filmed as a whole
constexpr int kDot = 10;
constexpr int kIconButton = 36;
const QColor kRed(0xff, 0x3b, 0x30);

QPushButton *addButton(QBoxLayout *row, const QString &text, const QString &symbol, const QColor &color)
{
    auto *button = new QPushButton(text);
    button->setIcon(Symbols::icon(symbol, color));
    button->setFocusPolicy(Qt::NoFocus); // the keyboard stays with the program that is filmed
    row->addWidget(button);
    return button;
}

} // namespace

RecordingHUDView::RecordingHUDView(const QString &stopShortcut, QWidget *parent)
    : QWidget(parent), m_time(new NumberLabel)
{
    m_time->setFont(Theme::font(Theme::Type::Body, QFont::Medium));
    // The row keeps its width while the time grows.
    m_time->setMinimumWidth(int(std::ceil(Theme::tabularWidth(m_time->font(), QStringLiteral("88:88")))));
    m_time->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(kDot + Theme::Space::inside, 0, 0, 0); // the dot; the panel has its own margins
    row->setSpacing(Theme::Space::group);
    row->addWidget(m_time);
    addDrawing(row);
    m_pause =
        addButton(row, RecordingUiTexts::tr("Resume"), QStringLiteral("pause.fill"), Theme::onMaterial());
    m_pause->setMinimumWidth(m_pause->sizeHint().width()); // of the longer word: "Stop" doesn't move
    QPushButton *stop =
        addButton(row, RecordingUiTexts::tr("Stop Recording"), QStringLiteral("stop.fill"), kRed);
    TipCenter::describe(stop,
                        {stop->text(), RecordingUiTexts::tr("Finish and open the recording."), stopShortcut});
    connect(stop, &QPushButton::clicked, this, &RecordingHUDView::stopClicked);
    connect(m_pause, &QPushButton::clicked, this, [this] {
        if (m_look == Look::Running)
            Q_EMIT pauseClicked();
        else
            Q_EMIT resumeClicked();
    });
    setAccessibleName(RecordingUiTexts::tr("Recording"));
    setElapsed(0);
    setLook(Look::Waiting);
}

void RecordingHUDView::addDrawing(QBoxLayout *row)
{
    m_draw =
        addButton(row, RecordingUiTexts::tr("Drawing"), QStringLiteral("pencil.tip"), Theme::onMaterial());
    m_draw->setCheckable(true);
    m_draw->setMinimumWidth(m_draw->sizeHint().width()); // of the longer word
    m_draw->setAccessibleName(RecordingUiTexts::tr("Draw on Screen"));
    TipCenter::describe(m_draw,
                        {RecordingUiTexts::tr("Draw on Screen"),
                         RecordingUiTexts::tr("Sketch on the screen while recording — it's part of the "
                                              "video. Esc or click again to stop drawing."),
                         {}});
    m_clear = addButton(row, {}, QStringLiteral("trash"), Theme::onMaterial());
    m_clear->setFixedWidth(kIconButton);
    m_clear->setAccessibleName(RecordingUiTexts::tr("Clear Drawing"));
    TipCenter::describe(
        m_clear,
        {RecordingUiTexts::tr("Clear Drawing"), RecordingUiTexts::tr("Erase everything you've drawn."), {}});
    connect(m_draw, &QPushButton::clicked, this, &RecordingHUDView::drawToggled);
    connect(m_clear, &QPushButton::clicked, this, &RecordingHUDView::clearClicked);
    setDrawing(false);
}

void RecordingHUDView::setDrawing(bool isDrawing)
{
    m_draw->setChecked(isDrawing);
    m_draw->setText(isDrawing ? RecordingUiTexts::tr("Drawing") : RecordingUiTexts::tr("Draw"));
    m_clear->setVisible(isDrawing);
}

void RecordingHUDView::setLook(Look look)
{
    m_look = look;
    const bool isPaused = look == Look::Paused;
    m_pause->setEnabled(look != Look::Waiting);
    m_draw->setEnabled(look != Look::Waiting);
    m_pause->setText(isPaused ? RecordingUiTexts::tr("Resume") : RecordingUiTexts::tr("Pause"));
    m_pause->setIcon(Symbols::icon(isPaused ? QStringLiteral("play.fill") : QStringLiteral("pause.fill"),
                                   Theme::onMaterial()));
    m_time->setColor(look == Look::Running ? Theme::onMaterial() : Theme::onMaterialSecondary());
    update();
}

void RecordingHUDView::setElapsed(double seconds)
{
    m_time->setText(elapsedText(seconds));
}

void RecordingHUDView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look == Look::Running ? kRed : Theme::onMaterialSecondary());
    painter.drawEllipse(QRectF(0, (height() - kDot) / 2.0, kDot, kDot));
}

RecordingChrome::RecordingChrome(const Screen &screen, const QRectF &rect, const QString &stopShortcut,
                                 QObject *parent)
    : QObject(parent), m_view(new RecordingHUDView(stopShortcut))
{
    const QRectF region = rect.translated(screen.frame().topLeft());
    QRectF anchor = region;
    if (rect.size() == screen.frame().size())
        anchor = QRectF(region.center().x(), region.bottom() - kFromBottom, 0, 0);
    else
        m_frameWindow = std::make_unique<RegionFrameWindow>(region, kRed);
    m_hud = HUDPanel::make(anchor, HUDPanel::usableFrame(screen), m_view);
}

RecordingChrome::~RecordingChrome() = default;

void RecordingChrome::show()
{
    if (m_frameWindow)
        m_frameWindow->show();
    m_hud->show();
}

void RecordingChrome::hide()
{
    if (m_frameWindow)
        m_frameWindow->hide();
    m_hud->hide();
}

QList<quint32> RecordingChrome::windows() const
{
    QList<quint32> windows{quint32(m_hud->winId())};
    if (m_frameWindow)
        windows.append(quint32(m_frameWindow->winId()));
    return windows;
}
