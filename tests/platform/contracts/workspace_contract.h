#pragma once

#include "platform/workspace.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

class WorkspaceWorld {
public:
    virtual ~WorkspaceWorld() = default;
    virtual Workspace &workspace() = 0;
    // The user goes to one of two programs, 0 or 1; what it is called.
    virtual Workspace::Application goTo(int program) = 0;
    virtual bool eventually(const std::function<bool()> &condition) = 0;
};

class WorkspaceContract : public testing::TestWithParam<std::function<std::unique_ptr<WorkspaceWorld>()>> {
protected:
    const std::unique_ptr<WorkspaceWorld> m_world = GetParam()();
    Workspace &m_workspace = m_world->workspace();
};
