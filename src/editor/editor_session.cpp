#include "editor/editor_session.h"

#include <QPointer>

void EditorSession::setMode(Mode mode)
{
    set(m_mode, mode, Field::Mode);
}

void EditorSession::setZoom(const std::optional<double> &zoom)
{
    set(m_zoom, zoom, Field::Zoom);
}

void EditorSession::setDisplayZoom(double zoom)
{
    set(m_displayZoom, zoom, Field::DisplayZoom);
}

void EditorSession::setPaletteOpen(bool open)
{
    set(m_isPaletteOpen, open, Field::Palette);
}

EditorSession::WorkToken EditorSession::beginWork()
{
    ++m_works;
    Q_EMIT changed(Field::Work);
    return {static_cast<void *>(this), [session = QPointer(this)](void *) {
                if (!session)
                    return;
                --session->m_works;
                Q_EMIT session->changed(Field::Work);
            }};
}
