// Preloaded into kwin_wayland 5.27 --virtual, whose outputs never tell that their picture has changed, so that their
// casts stay without frames: tells it after each frame that is presented, and binds its buffer when it is read.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdlib.h>

enum { kMost = 16 };

static void *outputs[kMost], *monitors[kMost], *pictures[kMost], *drawn;
static int outputCount, monitorCount, isReading;

#define AS(type, name) ((type)dlsym(RTLD_NEXT, name))

// KWin::Output::Output(QObject *)
void _ZN4KWin6OutputC2EP7QObject(void *self, void *parent)
{
    AS(void (*)(void *, void *), "_ZN4KWin6OutputC2EP7QObject")(self, parent);
    if (outputCount < kMost)
        outputs[outputCount++] = self;
}

// KWin::GLFramebuffer::pushFramebuffer: the outermost one of a frame is the output's.
void _ZN4KWin13GLFramebuffer15pushFramebufferEPS0_(void *buffer)
{
    if (!isReading && !AS(void *(*)(void), "_ZN4KWin13GLFramebuffer18currentFramebufferEv")())
        drawn = buffer;
    AS(void (*)(void *), "_ZN4KWin13GLFramebuffer15pushFramebufferEPS0_")(buffer);
}

// KWin::SoftwareVsyncMonitor::arm, called when a frame is presented. Outputs present first in the order in which they
// were made.
void _ZN4KWin20SoftwareVsyncMonitor3armEv(void *self)
{
    AS(void (*)(void *), "_ZN4KWin20SoftwareVsyncMonitor3armEv")(self);
    int i = 0;
    while (i < monitorCount && monitors[i] != self)
        ++i;
    if (i == kMost)
        return;
    if (i == monitorCount)
        monitors[monitorCount++] = self;
    if (i >= outputCount || !drawn)
        return;
    pictures[i] = drawn;
    void *all = NULL; // a QRegion
    AS(void (*)(void *, int, int, int, int, int), "_ZN7QRegionC1EiiiiNS_10RegionTypeE")(&all, 0, 0, 16384, 16384, 0);
    AS(void (*)(void *, void *), "_ZN4KWin6Output12outputChangeERK7QRegion")(outputs[i], &all);
    AS(void (*)(void *), "_ZN7QRegionD1Ev")(&all);
}

// KWin::AbstractEglBackend::textureForOutput copies what is bound.
void *_ZNK4KWin18AbstractEglBackend16textureForOutputEPNS_6OutputE(void *result, void *self, void *output)
{
    void *(*next)(void *, void *, void *) =
        AS(void *(*)(void *, void *, void *), "_ZNK4KWin18AbstractEglBackend16textureForOutputEPNS_6OutputE");
    for (int i = 0; i < outputCount; ++i) {
        if (outputs[i] != output || !pictures[i])
            continue;
        isReading = 1;
        AS(void (*)(void *), "_ZN4KWin13GLFramebuffer15pushFramebufferEPS0_")(pictures[i]);
        void *read = next(result, self, output);
        AS(void *(*)(void), "_ZN4KWin13GLFramebuffer14popFramebufferEv")();
        isReading = 0;
        return read;
    }
    return next(result, self, output);
}

__attribute__((constructor)) static void alone(void)
{
    unsetenv("LD_PRELOAD"); // not for what it starts
}
