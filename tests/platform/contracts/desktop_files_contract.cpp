#include "platform/contracts/desktop_files_contract.h"

#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TrashContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SecretsContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LoginItemContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PathsContract);

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST_P(TrashContract, MovesFilesAsTheyAreAlsoThoseOfOneName)
{
    const auto trash = GetParam()();
    const TemporaryFolder folder;
    const QString path = folder.path("Capture 1 % é.png");
    writeFile(path, "one");
    const auto move = [&] {
        const auto prepared = trash->prepare(path, {});
        EXPECT_TRUE(!prepared || QFile::exists(path)) << "nothing is moved yet";
        return prepared ? (*prepared)->finish() : Result<QString>(std::unexpected(prepared.error()));
    };
    const auto first = move();
    ASSERT_TRUE(first) << first.error().message.toStdString();
    EXPECT_FALSE(QFile::exists(path));
    writeFile(path, "two");
    const auto second = move();
    ASSERT_TRUE(second);
    EXPECT_NE(*first, *second);
    EXPECT_EQ(contents(*first), "one");
    EXPECT_EQ(contents(*second), "two");
    EXPECT_EQ(move().error().kind, Error::Kind::NotFound);
    EXPECT_EQ(trash->takeBack(*first, path, {}), path);
    EXPECT_EQ(contents(path), "one");
    EXPECT_FALSE(QFile::exists(*first));
    EXPECT_FALSE(trash->takeBack(*first, folder.path("again.png"), {}));
}

TEST_P(SecretsContract, KeepsReplacesAndRemovesOneValueForEachAccount)
{
    const auto secrets = GetParam()();
    const QString service = "com.oakfenrow.lumenpost";
    const auto get = [&](const QString &account, const QString &of) {
        return secrets->get(account, of, SecretsAccess::MayAsk).result();
    };
    EXPECT_EQ(get("key", service).error().kind, Error::Kind::NotFound);
    ASSERT_TRUE(secrets->set("sk-ä 1", "key", service).result());
    ASSERT_TRUE(secrets->set("other", "other", service).result());
    EXPECT_EQ(get("key", service).value_or("nothing"), "sk-ä 1");
    ASSERT_TRUE(secrets->set("sk-2", "key", service).result());
    EXPECT_EQ(get("key", service).value_or("nothing"), "sk-2");
    EXPECT_EQ(get("key", "elsewhere").error().kind, Error::Kind::NotFound);
    ASSERT_TRUE(secrets->set("", "key", service).result());
    EXPECT_EQ(get("key", service).error().kind, Error::Kind::NotFound);
    EXPECT_EQ(get("other", service).value_or("nothing"), "other");
    EXPECT_TRUE(secrets->set("", "never stored", service).result());
}

TEST_P(LoginItemContract, RemembersWhatWasWanted)
{
    const auto item = GetParam()();
    EXPECT_FALSE(item->isEnabled());
    for (const bool wanted : {true, true, false, false, true}) {
        ASSERT_TRUE(item->setEnabled(wanted));
        EXPECT_EQ(item->isEnabled(), wanted);
    }
}

TEST_P(PathsContract, AreAbsoluteAndWithoutATrailingSlash)
{
    const auto paths = GetParam()();
    for (const QString &path : {paths->home(), paths->pictures(), paths->desktop(), paths->temporary(),
                                paths->config(), paths->state(), paths->cache()}) {
        EXPECT_TRUE(QDir::isAbsolutePath(path)) << path.toStdString();
        EXPECT_EQ(path, QDir::cleanPath(path));
    }
    EXPECT_NE(paths->config(), paths->state());
    EXPECT_NE(paths->cache(), paths->state());
}
