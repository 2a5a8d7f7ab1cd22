#pragma once

#include "platform/pasteboard.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

class PasteboardContract : public testing::TestWithParam<std::function<std::unique_ptr<Pasteboard>()>> {
protected:
    const std::unique_ptr<Pasteboard> m_pasteboard = GetParam()();
};
