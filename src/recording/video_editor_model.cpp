#include "recording/video_editor_model.h"

#include <algorithm>

void VideoEditorModel::setDuration(double seconds)
{
    m_duration = seconds;
    m_part = whole();
    m_draft.reset();
    Q_EMIT changed();
}

void VideoEditorModel::beginTrim()
{
    if (!isReady() || isTrimming() || !m_busy.isEmpty())
        return;
    m_draft = m_part;
    Q_EMIT changed();
}

void VideoEditorModel::moveEdge(Edge edge, double seconds)
{
    if (!m_draft)
        return;
    const double gap = std::min(kShortest, m_duration);
    switch (edge) {
    case Edge::From:
        m_draft->from = std::clamp(seconds, 0.0, std::max(m_draft->to - gap, 0.0));
        break;
    case Edge::To:
        m_draft->to = std::clamp(seconds, std::min(m_draft->from + gap, m_duration), m_duration);
        break;
    }
    Q_EMIT changed();
}

void VideoEditorModel::confirmTrim()
{
    if (!m_draft)
        return;
    m_part = *m_draft;
    cancelTrim();
}

void VideoEditorModel::cancelTrim()
{
    m_draft.reset();
    Q_EMIT changed();
}

void VideoEditorModel::setBusy(const QString &words)
{
    m_busy = words;
    Q_EMIT changed();
}
