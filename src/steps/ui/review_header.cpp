#include "steps/ui/review_header.h"

#include "steps/steps_guide_model.h"
#include "steps/ui/caption_field.h"
#include "steps/ui/texts.h"
#include "ui/controls.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Looks like a heading until the pointer or the keyboard is in it.
class TitleField : public QLineEdit {
public:
    explicit TitleField(const QString &text) : QLineEdit(text)
    {
        setAttribute(Qt::WA_Hover);
        setFrame(false);
        setFont(Theme::font(Theme::Type::Heading, QFont::DemiBold));
        setProperty("focusRadius", -1.0);
        QPalette clear = palette();
        clear.setColor(QPalette::Base, Qt::transparent);
        setPalette(clear);
        setTextMargins(Theme::Space::inside, 4, Theme::Space::inside, 4);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        paintFieldFrame(this, hasFocus());
        QLineEdit::paintEvent(event);
    }
};

} // namespace

ReviewHeader::ReviewHeader(StepsGuideModel &model, QWidget *parent) : QWidget(parent), m_model(model)
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(Theme::Space::inside, Theme::Space::inside, Theme::Space::margin,
                             Theme::Space::group);
    rows->setSpacing(Theme::Space::inside);
    rows->addWidget(makeTitle());
    rows->addWidget(makeControls());
    connect(&model, &StepsGuideModel::stepsChanged, this, &ReviewHeader::follow);
    connect(&model, &StepsGuideModel::switchesChanged, this, &ReviewHeader::follow);
    connect(&model, &StepsGuideModel::statusChanged, this, &ReviewHeader::follow);
    follow();
}

QWidget *ReviewHeader::makeTitle()
{
    auto *line = new QWidget;
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins({});
    row->setSpacing(Theme::Space::group);
    m_title = new TitleField(m_model.title());
    m_title->setPlaceholderText(StepsUiTexts::tr("Guide title"));
    m_title->setAccessibleName(StepsUiTexts::tr("Guide title"));
    connect(m_title, &QLineEdit::textEdited, &m_model, &StepsGuideModel::setTitle);
    connect(m_title, &QLineEdit::returnPressed, this, [this] { m_title->clearFocus(); });
    m_count = new NumberLabel;
    row->addWidget(m_title, 1);
    row->addWidget(m_count);
    return line;
}

QWidget *ReviewHeader::makeControls()
{
    auto *line = new QWidget;
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(Theme::Space::inside, 0, 0, 0);
    row->setSpacing(Theme::Space::inside);
    const auto addChip = [row](const QString &text, const QString &name, const QString &symbol,
                               const QString &help) {
        auto *chip = new Chip(text, symbol);
        chip->setAccessibleName(name);
        TipCenter::describe(chip, {text, help, {}});
        row->addWidget(chip);
        return chip;
    };
    m_marks = addChip(StepsUiTexts::tr("Mark clicks"), StepsUiTexts::tr("Mark Clicks"),
                      QStringLiteral("cursorarrow.click.2"),
                      StepsUiTexts::tr("Circle where you clicked and number each step. Edited steps keep "
                                       "their own markers."));
    m_redacts = addChip(StepsUiTexts::tr("Hide emails, numbers & keys"), StepsUiTexts::tr("Auto-Redact"),
                        QStringLiteral("eye.slash"),
                        StepsUiTexts::tr("Pixelates sensitive text found in each step, on your Mac. Edited "
                                         "steps keep their own blurs."));
    m_redacts->setObjectName(QStringLiteral("redacts"));
    connect(m_marks, &Chip::clicked, &m_model, &StepsGuideModel::setMarkClicks);
    connect(m_redacts, &Chip::clicked, &m_model, &StepsGuideModel::setRedact);
    row->addStretch(1);

    m_improve = new BarButton(QStringLiteral("sparkles"), StepsUiTexts::tr("Improve Captions"),
                              BarButton::Label::Beside);
    TipCenter::describe(
        m_improve, {m_improve->text(),
                    StepsUiTexts::tr("Claude rewrites each step as a clear instruction (uses your API key)."),
                    {}});
    connect(m_improve, &QAbstractButton::clicked, &m_model, &StepsGuideModel::improveCaptions);
    row->addWidget(m_improve);

    m_export = new BarButton(QStringLiteral("square.and.arrow.up"), StepsUiTexts::tr("Export"),
                             BarButton::Label::Beside);
    TipCenter::describe(m_export, {m_export->text(),
                                   StepsUiTexts::tr("Save as a PDF, a web page you can host, Markdown, or "
                                                    "individual Library captures."),
                                   {}});
    auto *menu = new QMenu(m_export);
    connect(menu->addAction(symbolIcon(QStringLiteral("doc.richtext")), StepsUiTexts::tr("PDF…")),
            &QAction::triggered, this, &ReviewHeader::pdfWanted);
    connect(menu->addAction(symbolIcon(QStringLiteral("globe")),
                            StepsUiTexts::tr("Web Page && Markdown Folder…")),
            &QAction::triggered, this, &ReviewHeader::webFolderWanted);
    connect(menu->addAction(symbolIcon(QStringLiteral("folder.badge.plus")),
                            StepsUiTexts::tr("Save Steps to Library")),
            &QAction::triggered, &m_model, &StepsGuideModel::saveToLibrary);
    m_export->setMenu(menu);
    row->addWidget(m_export);

    m_create = new QPushButton(symbolIcon(QStringLiteral("list.number")), StepsUiTexts::tr("Create Guide"));
    m_create->setDefault(true);
    TipCenter::describe(
        m_create,
        {m_create->text(),
         StepsUiTexts::tr("Builds one tall guide image and opens it in the editor for final touches."),
         {}});
    connect(m_create, &QPushButton::clicked, &m_model, &StepsGuideModel::exportGuideImage);
    row->addWidget(m_create);
    return line;
}

void ReviewHeader::follow()
{
    const auto count = m_model.steps().size();
    m_count->setText(StepsUiTexts::tr("%n step(s)", nullptr, int(count)));
    m_marks->setChecked(m_model.markClicks());
    m_redacts->setChecked(m_model.redact());
    // One way out at a time; nothing is exported of nothing.
    const bool isFree = count > 0 && !m_model.canCancel();
    m_export->setEnabled(isFree);
    m_create->setEnabled(isFree);
    m_improve->setEnabled(count > 0 && !m_model.isImproving());
}

void ReviewHeader::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.fillRect(rect(), theme.surface);
    Theme::fillHairline(painter, QRectF(0, height() - 1, width(), 1), theme.hairline);
}
