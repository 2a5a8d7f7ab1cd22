#pragma once

#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

// Keys and pointer as from the user, while our own event loop goes on.
inline void xdotool(const QStringList &words)
{
    QProcess process;
    process.start("xdotool", words);
    ASSERT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 10000));
    ASSERT_EQ(process.exitCode(), 0) << words.join(' ').toStdString();
}
