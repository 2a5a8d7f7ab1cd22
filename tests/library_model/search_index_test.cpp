#include "library/model/search_index.h"

#include <QRandomGenerator>
#include <QStringList>
#include <gtest/gtest.h>

namespace {

QList<int> found(const SearchIndex &index, const QString &query)
{
    QList<int> hits;
    const auto bits = index.find(query);
    for (SearchIndex::Slot slot = 0; slot < index.slotCount(); ++slot) {
        if (SearchIndex::contains(bits, slot))
            hits.append(static_cast<int>(slot));
    }
    return hits;
}

using Fields = std::vector<QString>;

} // namespace

TEST(SearchIndex, FindsTextWhateverItsCaseAndWhereverItStands)
{
    SearchIndex index;
    for (const Fields &fields : {
             Fields{"Capture 1", "Terminal", "Lorem  ipsum dolor\nsit amet"},
             Fields{"Rechnung März", "", "RÉSUMÉ\n\nStraße 5"},
             Fields{"Capture 12", "Files", "ipsum Lorem"},
             Fields{"", "", ""},
         })
        index.add(fields);
    const struct {
        const char *query;
        QList<int> hits;
    } cases[]{
        {"", {0, 1, 2, 3}},
        {"lorem", {0, 2}},
        {"CAPTURE 1", {0, 2}},
        {"capture 12", {2}},
        {"orem ips", {}}, // two blanks stand there
        {"orem  ips", {0}},
        {"m do", {0}},
        {"dolor sit", {}}, // another line
        {"dolor\nsit a", {0}},
        {"\nsit", {0}},
        {"\n\nstr", {1}},
        {"ipsum dolor", {0}},
        {"psum lor", {2}},
        {"1 terminal", {}}, // no match reaches into the next field
        {"résumé", {1}},
        {"resume", {}},
        {"märz", {1}},
        {"stRAße", {1}},
        {"5", {1}},
        {"é", {1}},
        {"z", {1}},
        {"x", {}},
        {"unknown words here", {}},
    };
    for (const auto &wanted : cases)
        EXPECT_EQ(found(index, wanted.query), wanted.hits) << wanted.query;
    index.remove(2);
    EXPECT_EQ(found(index, "ipsum"), QList<int>{0});
    EXPECT_EQ(found(index, "i"), QList<int>{0});
    EXPECT_EQ(found(index, ""), (QList<int>{0, 1, 3}));
    EXPECT_EQ(found(SearchIndex(), "a"), QList<int>());
}

TEST(SearchIndex, FindsWhatLookingThroughAllTextsFinds)
{
    QRandomGenerator random(11);
    const QString letters = QStringLiteral("aab bbc  cdeé \nA1");
    const auto anything = [&](int most) {
        QString text;
        for (int i = random.bounded(most); i >= 0; --i)
            text += letters[random.bounded(static_cast<int>(letters.size()))];
        return text;
    };
    SearchIndex index;
    std::vector<Fields> documents;
    const auto add = [&](Fields fields) {
        index.add(fields);
        for (QString &field : fields)
            field = field.toCaseFolded();
        documents.push_back(std::move(fields));
    };
    for (int i = 0; i < 400; ++i) {
        add({anything(12), anything(4), anything(60)});
    }
    // So many words that their numbers take two units, and documents enough for several threads.
    for (int i = 0; i < 5000; ++i) {
        QString many;
        for (int n = 0; n < 8; ++n)
            many += QStringLiteral("w%1 ").arg(i * 8 + n);
        add({many, {}, anything(20)});
    }
    QStringList queries{"w39000 w39001", "0 w7", "w1", "1 w", "99 ", "w39999 "};
    for (int i = 0; i < 100; ++i)
        queries.append(anything(5));
    for (const QString &query : queries) {
        QList<int> expected;
        for (size_t i = 0; i < documents.size(); ++i) {
            for (const QString &field : documents[i]) {
                if (field.contains(query.toCaseFolded())) {
                    expected.append(static_cast<int>(i));
                    break;
                }
            }
        }
        EXPECT_TRUE(found(index, query) == expected) << '"' << query.toStdString() << '"';
    }
}
