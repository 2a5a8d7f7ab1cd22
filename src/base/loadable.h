#pragma once

#include "base/result.h"

#include <QFunctionPointer>

// Parts of the program that are opened when first needed, so that its start doesn't pay for their libraries.
namespace Loadable {

// The function `symbol` of the module `name` ("platform_recognition"), looked for in "../lib" and
// "../lib/lumenpost" beside the program. Error::Kind::Unavailable when the module or one of its libraries is
// missing. A module stays loaded. Callable from any thread.
Result<QFunctionPointer> symbol(const QString &name, const char *symbol);

template <typename Function>
Result<Function> function(const QString &name, const char *symbolName)
{
    auto found = symbol(name, symbolName);
    if (!found)
        return std::unexpected(found.error());
    return reinterpret_cast<Function>(*found);
}

} // namespace Loadable
