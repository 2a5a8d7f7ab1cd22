// Reads bytes as a project's description, takes its objects over and draws them small, as opening and
// rendering do.
//
//     cmake --preset fuzz && cmake --build build/fuzz --target fuzz_project
//     build/fuzz/fuzz/fuzz_project -max_len=20000 -detect_leaks=0 CORPUS tests/document/fuzz/seeds
//
// Without leak detection: the font library keeps what it made once.

#include "document/project_file.h"
#include "document/renderer.h"

#include <QGuiApplication>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto project = ProjectFile::decoded(
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    if (!project)
        return 0;
    QList<Annotation> objects = project->objects();
    for (const Annotation &object : objects)
        object.handles();
    if (objects.size() > 40)
        objects.resize(40); // many objects find nothing that one doesn't
    QImage base(90, 70, QImage::Format_RGB32);
    base.fill(0xff8090a0);
    static const QImage mosaic = Renderer::pixelated(base);
    const QImage picture = project->effects().applied(Renderer::flattened(base, mosaic, objects));
    // What was read must be written, and read again to the same.
    const ProjectFile written = ProjectFile::describing(objects, project->effects());
    const auto again = ProjectFile::decoded(written.encoded());
    if (picture.isNull() || !again || again->annotations.size() != written.annotations.size())
        std::abort();
    return 0;
}
