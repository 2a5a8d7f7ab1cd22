#pragma once

#include "platform/login_item.h"
#include "platform/paths.h"
#include "platform/secrets.h"
#include "platform/trash.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

template <typename Port>
using MakePort = std::function<std::unique_ptr<Port>()>;

class TrashContract : public testing::TestWithParam<MakePort<Trash>> {};
class SecretsContract : public testing::TestWithParam<MakePort<Secrets>> {};
class LoginItemContract : public testing::TestWithParam<MakePort<LoginItem>> {};
class PathsContract : public testing::TestWithParam<MakePort<Paths>> {};
