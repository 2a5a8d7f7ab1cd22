#pragma once

#include "base/loadable.h"

#include <memory>
#include <mutex>

// One object of a loadable module, made when first asked for and kept. Callable from any thread.
template <typename Part>
class LazyPart {
public:
    LazyPart(const char *module, const char *symbol) : m_module(module), m_symbol(symbol) {}
    Result<Part *> get()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_part) {
            const auto make = Loadable::function<Part *(*)()>(QString::fromLatin1(m_module), m_symbol);
            if (!make)
                return std::unexpected(make.error());
            m_part.reset((*make)());
        }
        return m_part.get();
    }

private:
    const char *m_module;
    const char *m_symbol;
    std::mutex m_mutex;
    std::unique_ptr<Part> m_part;
};
