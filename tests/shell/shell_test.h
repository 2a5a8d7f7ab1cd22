#pragma once

#include "shell/shell_stage.h"

#include <QTest>
#include <gmock/gmock.h>

struct ShellTest : testing::Test, ShellStage {};
