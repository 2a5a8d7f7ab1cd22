#include "library/ui/library_inspector.h"

#include "library/model/library_model.h"
#include "library/ui/item_detail.h"
#include "library/ui/texts.h"
#include "ui/controls.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QStackedLayout>

namespace {
enum Page { Nothing, One, Several };
}

LibraryInspector::LibraryInspector(const LibraryPorts &ports, LibraryActions &actions, QWidget *parent)
    : QWidget(parent),
      m_model(ports.model),
      m_pages(new QStackedLayout(this)),
      m_detail(new ItemDetail(ports, actions))
{
    setAccessibleName(LibraryUiTexts::tr("Inspector"));
    m_pages->setContentsMargins(1, 0, 0, 0);
    m_pages->insertWidget(
        Nothing, new EmptyState(QStringLiteral("cursorarrow.click.2"), LibraryUiTexts::tr("No Selection"),
                                LibraryUiTexts::tr(
                                    "Select a capture to see its details.\nSpace previews, Return opens.")));
    auto *scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->viewport()->setAutoFillBackground(false);
    scroll->setWidget(m_detail);
    m_detail->setAutoFillBackground(false);
    m_pages->insertWidget(One, scroll);
    m_several = new QWidget;
    new QVBoxLayout(m_several);
    m_several->layout()->setContentsMargins({});
    m_pages->insertWidget(Several, m_several);
    connect(&m_model, &LibraryModel::selectionChanged, this, &LibraryInspector::update);
    connect(&m_model, &LibraryModel::visibleChanged, this, &LibraryInspector::update);
}

void LibraryInspector::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    update();
}

void LibraryInspector::update()
{
    if (!isVisible())
        return;
    const QStringList selected = m_model.selectedPaths();
    if (selected.isEmpty())
        return m_pages->setCurrentIndex(Nothing);
    if (selected.size() == 1) {
        if (m_detail->path() != selected.first() || m_pages->currentIndex() != One)
            m_detail->setItem(m_model.visibleItem(m_model.visibleIndex(selected.first())));
        return m_pages->setCurrentIndex(One);
    }
    while (QLayoutItem *item = m_several->layout()->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    m_several->layout()->addWidget(new EmptyState(
        QStringLiteral("square.stack.3d.up.fill"),
        LibraryUiTexts::tr("%n items selected", nullptr, static_cast<int>(selected.size())),
        LibraryUiTexts::tr("Use the bar at the bottom to export, combine, rename or file them.")));
    m_pages->setCurrentIndex(Several);
}
