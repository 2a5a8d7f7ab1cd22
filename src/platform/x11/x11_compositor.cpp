#include "platform/x11/x11_compositor.h"

#include "platform/x11/x11_connection.h"

#include <xcb/composite.h>
#include <xcb/render.h>
#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace {

constexpr int kClearance = 60; // pixels around a window that its shadow may darken

} // namespace

X11Compositor::X11Compositor(const X11Connection &connection) : m_connection(connection) {}

// Formats of all visuals: a long answer, asked for once.
void X11Compositor::learnFormats()
{
    if (!m_formats.isEmpty())
        return;
    xcb_connection_t *xcb = m_connection.xcb();
    const XcbOwned<xcb_render_query_pict_formats_reply_t> reply(
        xcb_render_query_pict_formats_reply(xcb, xcb_render_query_pict_formats(xcb), nullptr));
    if (!reply)
        return;
    for (auto screen = xcb_render_query_pict_formats_screens_iterator(reply.get()); screen.rem;
         xcb_render_pictscreen_next(&screen)) {
        for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem;
             xcb_render_pictdepth_next(&depth)) {
            const xcb_render_pictvisual_t *visuals = xcb_render_pictdepth_visuals(depth.data);
            for (int i = 0; i < xcb_render_pictdepth_visuals_length(depth.data); ++i)
                m_formats.insert(visuals[i].visual, visuals[i].format);
        }
    }
}

quint32 X11Compositor::paint(const X11Survey &survey, const QRect &area)
{
    learnFormats();
    xcb_connection_t *xcb = m_connection.xcb();
    const quint32 format = m_formats.value(m_connection.screen()->root_visual);
    if (format == 0)
        return 0;
    drainErrors();
    const quint32 pixmap = xcb_generate_id(xcb);
    xcb_create_pixmap(xcb, m_connection.screen()->root_depth, pixmap, m_connection.root(),
                      quint16(area.width()), quint16(area.height()));
    const quint32 target = xcb_generate_id(xcb);
    xcb_render_create_picture(xcb, target, pixmap, format, 0, nullptr);
    paintWallpaper(survey, target, area);
    for (const X11Survey::TopLevel &window : survey.windows) {
        if (!window.isOwn && window.outer.intersects(area) && m_formats.contains(window.visual))
            paintWindow(window, target, area);
    }
    xcb_render_free_picture(xcb, target);
    const XcbOwned<xcb_get_input_focus_reply_t> done(xcb_get_input_focus_reply(
        xcb, xcb_get_input_focus(xcb), nullptr)); // all errors have come before this
    if (drainErrors()) {
        release(pixmap);
        return 0;
    }
    return pixmap;
}

void X11Compositor::release(quint32 pixmap)
{
    xcb_free_pixmap(m_connection.xcb(), pixmap);
}

void X11Compositor::paintWallpaper(const X11Survey &survey, quint32 target, const QRect &area)
{
    xcb_connection_t *xcb = m_connection.xcb();
    const quint32 pixmap = survey.rootPixmap != 0 ? survey.rootPixmap : sampledWallpaper(survey);
    const quint32 source = xcb_generate_id(xcb);
    const quint32 repeat = XCB_RENDER_REPEAT_NORMAL;
    xcb_render_create_picture(xcb, source, pixmap, m_formats.value(m_connection.screen()->root_visual),
                              XCB_RENDER_CP_REPEAT, &repeat);
    xcb_render_composite(xcb, XCB_RENDER_PICT_OP_SRC, source, XCB_NONE, target, qint16(area.x()),
                         qint16(area.y()), 0, 0, 0, 0, quint16(area.width()), quint16(area.height()));
    xcb_render_free_picture(xcb, source);
    if (pixmap != survey.rootPixmap)
        xcb_free_pixmap(xcb, pixmap);
}

// A background that nobody published is a plain colour nearly always: one pixel of it, seen beside all
// windows and their shadows, tells it.
quint32 X11Compositor::sampledWallpaper(const X11Survey &survey) const
{
    QRegion bare(survey.root);
    for (const X11Survey::TopLevel &window : survey.windows)
        bare -= window.outer.adjusted(-kClearance, -kClearance, kClearance, kClearance);
    const QPoint place = bare.isEmpty() ? QPoint() : bare.begin()->center();

    xcb_connection_t *xcb = m_connection.xcb();
    const quint32 root = m_connection.root();
    const quint32 pixmap = xcb_generate_id(xcb);
    xcb_create_pixmap(xcb, m_connection.screen()->root_depth, pixmap, root, 1, 1);
    const quint32 context = xcb_generate_id(xcb);
    // In order of the mask's bits: what compositing managers paint lies over the root.
    const quint32 values[] = {m_connection.screen()->black_pixel, XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
    xcb_create_gc(xcb, context, pixmap, XCB_GC_FOREGROUND | XCB_GC_SUBWINDOW_MODE, values);
    if (bare.isEmpty()) {
        const xcb_rectangle_t whole = {0, 0, 1, 1};
        xcb_poly_fill_rectangle(xcb, pixmap, context, 1, &whole);
    } else {
        xcb_copy_area(xcb, root, pixmap, context, qint16(place.x()), qint16(place.y()), 0, 0, 1, 1);
    }
    xcb_free_gc(xcb, context);
    return pixmap;
}

void X11Compositor::paintWindow(const X11Survey::TopLevel &window, quint32 target, const QRect &area)
{
    xcb_connection_t *xcb = m_connection.xcb();
    const quint32 pixmap = xcb_generate_id(xcb);
    xcb_composite_name_window_pixmap(xcb, window.id, pixmap);
    const quint32 source = xcb_generate_id(xcb);
    xcb_render_create_picture(xcb, source, pixmap, m_formats.value(window.visual), 0, nullptr);

    const QPoint place = window.outer.topLeft() - area.topLeft();
    const quint32 shape = xcb_generate_id(xcb);
    xcb_xfixes_create_region_from_window(xcb, shape, window.id, XCB_SHAPE_SK_BOUNDING);
    xcb_xfixes_set_picture_clip_region(xcb, target, shape, qint16(place.x()), qint16(place.y()));

    quint32 mask = XCB_NONE;
    if (window.opacity < 1) {
        mask = xcb_generate_id(xcb);
        const xcb_render_color_t veil = {0, 0, 0, quint16(window.opacity * 0xffff)};
        xcb_render_create_solid_fill(xcb, mask, veil);
    }
    const bool isOpaque = window.depth != 32 && mask == XCB_NONE;
    xcb_render_composite(xcb, isOpaque ? XCB_RENDER_PICT_OP_SRC : XCB_RENDER_PICT_OP_OVER, source, mask,
                         target, 0, 0, 0, 0, qint16(place.x()), qint16(place.y()),
                         quint16(window.outer.width()), quint16(window.outer.height()));
    xcb_xfixes_set_picture_clip_region(xcb, target, XCB_NONE, 0, 0);
    if (mask != XCB_NONE)
        xcb_render_free_picture(xcb, mask);
    xcb_xfixes_destroy_region(xcb, shape);
    xcb_render_free_picture(xcb, source);
    xcb_free_pixmap(xcb, pixmap);
}

// Whether any request failed since the last call.
bool X11Compositor::drainErrors()
{
    bool failed = false;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.xcb())})
        failed = failed || event->response_type == 0;
    return failed;
}
