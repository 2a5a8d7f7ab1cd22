#include "capture/scrolling_words.h"

#include "capture/scrolling_session.h"
#include "capture/texts.h"

using Reason = ScrollingCaptureSession::Reason;

std::optional<QString> ScrollingWords::whyNothing(const ScrollingCaptureSession &session)
{
    if (session.reason() == Reason::NothingMoved)
        return CaptureTexts::tr("Nothing in that region scrolled.");
    if (session.reason() == Reason::LostThread && session.frames() == 1)
        return CaptureTexts::tr("Something in that region scrolled, but it could not be followed.");
    return {};
}

QStringList ScrollingWords::doubts(const ScrollingCaptureSession &session)
{
    QStringList doubts;
    if (session.reason() == Reason::LostThread)
        doubts.append(CaptureTexts::tr("The picture ends early: what came next could not be followed."));
    if (session.reason() == Reason::Limit)
        doubts.append(
            CaptureTexts::tr("The picture has reached its limit, and the content goes on below it."));
    if (std::ranges::any_of(session.steps(), [](const ScrollStep &step) { return !step.sure; }))
        doubts.append(CaptureTexts::tr("So many rows look alike that some may be missing from the picture."));
    return doubts;
}
