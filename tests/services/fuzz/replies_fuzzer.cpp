// Reads bytes as the replies of both online services. The first byte chooses the status.
//
//     cmake --preset fuzz && cmake --build build/fuzz --target fuzz_replies
//     build/fuzz/fuzz/fuzz_replies -max_len=8000 CORPUS tests/services/fuzz/seeds

#include "platform/http.h"
#include "services/claude_client.h"
#include "services/uploader.h"

#include <array>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    constexpr std::array Statuses{200, 0, 201, 302, 400, 429, 500, 529};
    const HttpResponse response{Statuses[data[0] % Statuses.size()],
                                QByteArray(reinterpret_cast<const char *>(data) + 1, qsizetype(size) - 1)};
    const auto text = ClaudeClient::read(response);
    const auto link = Uploader::read(response);
    const bool onlyFromA200 = response.status == 200 || (!text && !link);
    const bool trimmed = !text || *text == text->trimmed();
    const bool usable = !link || (link->isValid() && !link->isEmpty());
    if (!onlyFromA200 || !trimmed || !usable)
        std::abort();
    return 0;
}
