#include "recording/ui/video_editor_view.h"

#include "recording/film_time.h"
#include "recording/ui/film_canvas.h"
#include "recording/ui/film_timeline.h"
#include "recording/ui/texts.h"
#include "ui/controls.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedLayout>

namespace {

constexpr QSize kSmallest(640, 420);
constexpr int kBarHeight = 62;
constexpr int kFieldWidth = 96;
constexpr int kLineHeight = 4; // of the progress

// The part of the window with the colour of bars.
class Bars : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        const Theme::Tokens &theme = Theme::tokens(this);
        QPainter painter(this);
        painter.fillRect(rect(), theme.surface);
        Theme::fillHairline(painter, QRectF(0, 0, width(), 1), theme.hairline);
    }
};

QLabel *secondaryLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Theme::font(Theme::Type::Control));
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QHBoxLayout *barRow(QWidget *page)
{
    auto *row = new QHBoxLayout(page);
    row->setContentsMargins(Theme::Space::margin, 0, Theme::Space::margin, 0);
    row->setSpacing(Theme::Space::inside);
    return row;
}

BarButton *barButton(const QString &symbol, const QString &text, const QString &help)
{
    auto *button = new BarButton(symbol, text, BarButton::Label::Under);
    TipCenter::describe(button, {text, help, {}});
    return button;
}

QPushButton *textButton(const QString &text, const QString &help)
{
    auto *button = new QPushButton(text);
    button->setAutoDefault(false);
    TipCenter::describe(button, {text, help, {}});
    return button;
}

} // namespace

VideoEditorView::VideoEditorView(VideoEditorModel &model)
    : m_model(model), m_stage(new QStackedLayout), m_pages(new QStackedLayout)
{
    setMinimumSize(kSmallest);
    m_canvas = new FilmCanvas;
    m_stage->addWidget(m_canvas);
    auto *bars = new Bars;
    auto *rows = new QVBoxLayout(bars);
    rows->setContentsMargins(0, Theme::Space::group, 0, 0);
    rows->setSpacing(Theme::Space::inside);
    rows->addWidget(makeTransport());
    rows->addWidget(new Hairline(Qt::Horizontal));
    m_pages->addWidget(makeActions());
    m_pages->addWidget(makeTrimming());
    m_pages->addWidget(makeProgress());
    rows->addLayout(m_pages);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_stage, 1);
    column->addWidget(bars);
    connect(m_canvas, &FilmCanvas::clicked, this, &VideoEditorView::playToggled);
    connect(&m_model, &VideoEditorModel::changed, this, &VideoEditorView::follow);
    showPlaying(false);
    follow();
    setFocusPolicy(Qt::StrongFocus); // the keys work before any button was reached
    setFocus();
}

QWidget *VideoEditorView::makeTransport()
{
    auto *page = new QWidget;
    QHBoxLayout *row = barRow(page);
    m_play = new BarButton(QStringLiteral("play.fill"), {}, BarButton::Label::None);
    m_time = new NumberLabel;
    m_time->setFont(Theme::font(Theme::Type::Control));
    m_timeline = new FilmTimeline(m_model);
    row->addWidget(m_play);
    row->addWidget(m_timeline, 1);
    row->addWidget(m_time);
    connect(m_play, &BarButton::clicked, this, &VideoEditorView::playToggled);
    return page;
}

QWidget *VideoEditorView::makeActions()
{
    auto *page = new QWidget;
    page->setFixedHeight(kBarHeight);
    QHBoxLayout *row = barRow(page);
    m_trim =
        barButton(QStringLiteral("timeline.selection"), RecordingUiTexts::tr("Trim Again"),
                  RecordingUiTexts::tr("Drag the yellow handles to cut the start and end. Exports use the "
                                       "trimmed part."));
    m_trim->setMinimumWidth(m_trim->sizeHint().width()); // of the longer words
    m_trim->setAccessibleName({});                       // its text is, which changes
    auto *reveal = barButton(QStringLiteral("folder"), RecordingUiTexts::tr("Show in Finder"), {});
    auto *copy = barButton(QStringLiteral("doc.on.doc"), RecordingUiTexts::tr("Copy"),
                           RecordingUiTexts::tr("Copy the video file to paste into Mail, Slack or Finder."));
    auto *captions = barButton(
        QStringLiteral("captions.bubble"), RecordingUiTexts::tr("Captions…"),
        RecordingUiTexts::tr("Turn the speech in this recording into subtitles (SRT), transcribed on your "
                             "Mac."));
    captions->setAccessibleName(RecordingUiTexts::tr("Captions"));
    m_trimNote = secondaryLabel(RecordingUiTexts::tr("Exports use the trimmed range"));
    m_gif =
        textButton(RecordingUiTexts::tr("Export GIF…"),
                   RecordingUiTexts::tr("Make an animated GIF (up to 60 seconds, 12 fps) — great for chat "
                                        "and docs."));
    m_mp4 = textButton(RecordingUiTexts::tr("Export MP4…"),
                       RecordingUiTexts::tr("Save a high-quality video file. Uses the trimmed range if you "
                                            "trimmed."));
    m_mp4->setDefault(true);
    m_captions = captions;
    m_quiet = {reveal, copy, captions};
    row->addWidget(m_trim);
    row->addWidget(reveal);
    row->addWidget(copy);
    row->addWidget(captions);
    row->addSpacing(Theme::Space::unit);
    row->addWidget(m_trimNote);
    row->addStretch();
    row->addWidget(m_gif);
    row->addWidget(m_mp4);
    connect(m_trim, &BarButton::clicked, this, &VideoEditorView::trimClicked);
    connect(reveal, &BarButton::clicked, this, &VideoEditorView::revealClicked);
    connect(copy, &BarButton::clicked, this, &VideoEditorView::copyClicked);
    connect(captions, &BarButton::clicked, this, &VideoEditorView::captionsClicked);
    connect(m_gif, &QPushButton::clicked, this, &VideoEditorView::gifClicked);
    connect(m_mp4, &QPushButton::clicked, this, &VideoEditorView::mp4Clicked);
    return page;
}

QLineEdit *VideoEditorView::makeTimeField(VideoEditorModel::Edge edge, const QString &name)
{
    auto *field = new QLineEdit;
    field->setFixedWidth(kFieldWidth);
    field->setAlignment(Qt::AlignRight);
    field->setAccessibleName(name);
    field->setProperty("focusRadius", -1.0);
    connect(field, &QLineEdit::editingFinished, this, [this, field, edge] {
        if (const auto seconds = FilmTime::parse(field->text()); seconds && field->isModified())
            Q_EMIT edgeTyped(edge, *seconds);
        field->setModified(false);
        followTrim(); // what makes no sense goes again
    });
    return field;
}

QWidget *VideoEditorView::makeTrimming()
{
    auto *page = new QWidget;
    page->setFixedHeight(kBarHeight);
    QHBoxLayout *row = barRow(page);
    m_from = makeTimeField(VideoEditorModel::Edge::From, RecordingUiTexts::tr("Start of the trimmed part"));
    m_to = makeTimeField(VideoEditorModel::Edge::To, RecordingUiTexts::tr("End of the trimmed part"));
    m_length = new NumberLabel;
    m_length->setFont(Theme::font(Theme::Type::Control));
    auto *cancel = textButton(RecordingUiTexts::tr("Cancel"), {});
    auto *trim = textButton(RecordingUiTexts::tr("Trim"), {});
    trim->setDefault(true);
    row->addWidget(secondaryLabel(RecordingUiTexts::tr("From")));
    row->addWidget(m_from);
    row->addSpacing(Theme::Space::inside);
    row->addWidget(secondaryLabel(RecordingUiTexts::tr("To")));
    row->addWidget(m_to);
    row->addSpacing(Theme::Space::inside);
    row->addWidget(m_length);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(trim);
    connect(cancel, &QPushButton::clicked, this, &VideoEditorView::trimCancelled);
    connect(trim, &QPushButton::clicked, this, &VideoEditorView::trimConfirmed);
    return page;
}

QWidget *VideoEditorView::makeProgress()
{
    auto *page = new QWidget;
    page->setFixedHeight(kBarHeight);
    QHBoxLayout *row = barRow(page);
    auto *column = new QVBoxLayout;
    column->setSpacing(Theme::Space::inside);
    m_progress = new NumberLabel;
    m_progress->setFont(Theme::font(Theme::Type::Control));
    m_bar = new QProgressBar;
    m_bar->setRange(0, 1000);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(kLineHeight);
    column->addStretch();
    column->addWidget(m_progress);
    column->addWidget(m_bar);
    column->addStretch();
    auto *cancel = textButton(RecordingUiTexts::tr("Cancel"), {});
    row->addLayout(column, 1);
    row->addSpacing(Theme::Space::inside);
    row->addWidget(cancel);
    connect(cancel, &QPushButton::clicked, this, &VideoEditorView::cancelClicked);
    return page;
}

void VideoEditorView::showPicture(const QImage &picture, double position)
{
    m_position = position;
    m_canvas->setPicture(picture);
    m_timeline->setPosition(position);
    m_time->setText(
        RecordingUiTexts::tr("%1 / %2").arg(FilmTime::text(position), FilmTime::text(m_model.duration())));
}

void VideoEditorView::showPlaying(bool isPlaying)
{
    const QString name = isPlaying ? RecordingUiTexts::tr("Pause") : RecordingUiTexts::tr("Play");
    m_play->setSymbol(isPlaying ? QStringLiteral("pause.fill") : QStringLiteral("play.fill"));
    m_play->setAccessibleName(name);
    TipCenter::describe(m_play, {name, {}, RecordingUiTexts::tr("Space")});
}

void VideoEditorView::showUnplayable(const QString &reason)
{
    if (m_stage->count() > 1)
        return;
    auto *empty = new EmptyState(QStringLiteral("film"), RecordingUiTexts::tr("Nothing to play"), reason);
    m_stage->addWidget(empty);
    m_stage->setCurrentWidget(empty);
    follow();
}

void VideoEditorView::showProgress(double done, std::optional<double> left)
{
    m_bar->setValue(int(done * m_bar->maximum()));
    const QString share = RecordingUiTexts::tr("%1 %2 %").arg(m_model.busy()).arg(int(done * 100));
    m_progress->setText(
        left ? RecordingUiTexts::tr("%1, %2 left").arg(share, FilmTime::text(*left).section('.', 0, 0))
             : share);
}

void VideoEditorView::follow()
{
    const bool isReady = m_model.isReady();
    m_trim->setText(m_model.isTrimmed() ? RecordingUiTexts::tr("Trim Again") : RecordingUiTexts::tr("Trim"));
    for (QWidget *needy : {static_cast<QWidget *>(m_trim), static_cast<QWidget *>(m_gif),
                           static_cast<QWidget *>(m_mp4), static_cast<QWidget *>(m_play),
                           static_cast<QWidget *>(m_timeline), static_cast<QWidget *>(m_captions)})
        needy->setEnabled(isReady);
    const Page page = !m_model.busy().isEmpty() ? Progress : m_model.isTrimming() ? Trimming : Actions;
    m_pages->setCurrentIndex(page);
    followTrim();
    fitActions();
}

void VideoEditorView::followTrim()
{
    const VideoEditorModel::Part &part = m_model.shownPart();
    const auto show = [](QLineEdit *field, double seconds) {
        if (!field->hasFocus() || !field->isModified() || !FilmTime::parse(field->text()))
            field->setText(FilmTime::text(seconds));
    };
    show(m_from, part.from);
    show(m_to, part.to);
    m_length->setText(RecordingUiTexts::tr("%1 s").arg(part.length(), 0, 'f', 2));
}

// The note is the first to go.
void VideoEditorView::fitActions()
{
    int needed = 2 * Theme::Space::margin + m_trimNote->sizeHint().width() + m_trim->sizeHint().width() +
                 m_gif->sizeHint().width() + m_mp4->sizeHint().width() + 9 * Theme::Space::inside;
    for (const BarButton *button : std::as_const(m_quiet))
        needed += button->sizeHint().width();
    m_trimNote->setVisible(m_model.isTrimmed() && needed <= width());
}

void VideoEditorView::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (event->matches(QKeySequence::Close))
        close();
    else if (event->matches(QKeySequence::Copy) && m_model.busy().isEmpty())
        Q_EMIT copyClicked();
    else if (event->key() == Qt::Key_Space && isPlain)
        Q_EMIT playToggled();
    else if (event->key() == Qt::Key_Escape && m_model.isTrimming())
        Q_EMIT trimCancelled();
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && m_model.isTrimming())
        qobject_cast<QLineEdit *>(focusWidget()) ? setFocus() : trimConfirmed(); // what was typed first
    else if (m_timeline->isEnabled() && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right ||
                                         event->key() == Qt::Key_Home || event->key() == Qt::Key_End))
        QCoreApplication::sendEvent(m_timeline, event);
    else
        QWidget::keyPressEvent(event);
}

void VideoEditorView::resizeEvent(QResizeEvent *)
{
    fitActions();
}

void VideoEditorView::closeEvent(QCloseEvent *event)
{
    event->accept();
    Q_EMIT closed();
}
