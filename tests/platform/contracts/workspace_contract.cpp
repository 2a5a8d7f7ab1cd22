#include "platform/contracts/workspace_contract.h"

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(WorkspaceContract);

TEST_P(WorkspaceContract, TellsTheProgramInFrontAndItsChange)
{
    const auto first = m_world->goTo(0);
    EXPECT_TRUE(m_world->eventually([&] { return m_workspace.frontmost() == first; }));
    QList<Workspace::Application> activated;
    QObject::connect(
        &m_workspace, &Workspace::activated, &m_workspace,
        [&activated](const Workspace::Application &application) { activated.append(application); });
    const auto second = m_world->goTo(1);
    EXPECT_TRUE(m_world->eventually([&] { return m_workspace.frontmost() == second; }));
    EXPECT_TRUE(m_world->eventually([&] { return !activated.isEmpty() && activated.last() == second; }));
    EXPECT_FALSE(activated.contains(first));
}

TEST_P(WorkspaceContract, GivesTheKeyboardBackToWhoHadIt)
{
    const auto first = m_world->goTo(0);
    ASSERT_TRUE(m_world->eventually([&] { return m_workspace.frontmost() == first; }));
    m_workspace.rememberActiveWindow();
    const auto second = m_world->goTo(1);
    ASSERT_TRUE(m_world->eventually([&] { return m_workspace.frontmost() == second; }));
    m_workspace.restoreActiveWindow();
    EXPECT_TRUE(m_world->eventually([&] { return m_workspace.frontmost() == first; }));
}

TEST_P(WorkspaceContract, RefusesToShowAFileThatIsNotThere)
{
    EXPECT_EQ(m_workspace.reveal("/nowhere/at all.png").error().kind, Error::Kind::NotFound);
}
