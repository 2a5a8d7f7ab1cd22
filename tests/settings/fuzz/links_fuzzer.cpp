#include "settings/url_command.h"

#include <cstdint>
#include <cstdlib>

// Links come from anywhere: whatever is understood must be something that can be carried out.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace URLCommand;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QUrl url(QString::fromUtf8(bytes));
    withoutQuery(url);
    const auto command = parse(url);
    if (!command)
        return 0;
    if (const auto *preset = std::get_if<Preset>(&*command); preset && preset->name.isEmpty())
        std::abort();
    if (const auto *open = std::get_if<Open>(&*command);
        open && (!open->file.isLocalFile() || open->file.toLocalFile().contains(QChar(u'\0'))))
        std::abort();
    return 0;
}
