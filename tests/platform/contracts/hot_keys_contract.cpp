#include "platform/contracts/hot_keys_contract.h"

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(HotKeysContract);

namespace {

constexpr int kControlShift = 0x1200;
constexpr int kF = 3;
constexpr int kC = 8;
constexpr int kSpace = 49;
constexpr int kNine = 25;

} // namespace

TEST_P(HotKeysContract, TellsTheIdentifierOfThePressedCombination)
{
    ASSERT_TRUE(m_hotKeys.registerKey(11, kF, kControlShift));
    ASSERT_TRUE(m_hotKeys.registerKey(12, kSpace, kControlShift));
    ASSERT_TRUE(m_hotKeys.registerKey(13, kNine, kControlShift));
    m_world->type("space", kSpace);
    m_world->type("f", kF);
    m_world->type("9", kNine);
    const QList<quint32> expected{12, 11, 13};
    EXPECT_TRUE(m_world->eventually([&] { return m_pressed == expected; })) << m_pressed.size();
}

TEST_P(HotKeysContract, RefusesWhatIsTakenAndServesTheOthers)
{
    m_world->takeElsewhere(kC);
    const auto taken = m_hotKeys.registerKey(1, kC, kControlShift);
    ASSERT_FALSE(taken);
    EXPECT_EQ(taken.error().kind, Error::Kind::Unavailable);
    ASSERT_TRUE(m_hotKeys.registerKey(2, kF, kControlShift));
    EXPECT_FALSE(m_hotKeys.registerKey(3, kF, kControlShift)); // twice the same
    m_world->type("c", kC);
    m_world->type("f", kF);
    EXPECT_TRUE(m_world->eventually([&] { return m_pressed == QList<quint32>{2}; })) << m_pressed.size();
}

TEST_P(HotKeysContract, IsSilentAfterAllWereUnregistered)
{
    ASSERT_TRUE(m_hotKeys.registerKey(1, kF, kControlShift));
    m_hotKeys.unregisterAll();
    m_world->type("f", kF);
    ASSERT_TRUE(m_hotKeys.registerKey(2, kF, kControlShift));
    m_world->type("f", kF);
    EXPECT_TRUE(m_world->eventually([&] { return m_pressed == QList<quint32>{2}; })) << m_pressed.size();
}
