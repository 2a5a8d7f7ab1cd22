#include "capture/stillness.h"

#include <algorithm>

namespace {

// Scrolled text changes nearly all rows that are not blank, a caret a few. A spinner changes more rows than
// that, but of what is to be seen little: two of 76 pixels in 1100x704 are 4% of the tiles that show
// something, a film of 240x160 is 12%.
constexpr double kSameRows = 0.9;
constexpr double kSameTiles = 0.93;

double sameShare(const std::vector<quint64> &a, const std::vector<quint64> &b,
                 const std::vector<quint8> &uniformInA, const std::vector<quint8> &uniformInB)
{
    int telling = 0;
    int same = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        if (uniformInA[i] && uniformInB[i] && a[i] == b[i])
            continue;
        ++telling;
        same += a[i] == b[i];
    }
    return double(same) / std::max(telling, 1);
}

} // namespace

bool Stillness::isSamePlace(const ComparedPicture &a, const ComparedPicture &b)
{
    if (a.pixels().size() != b.pixels().size())
        return false;
    if (a.rows().hashes == b.rows().hashes)
        return true;
    const RowSignatures &ones = a.rows();
    const RowSignatures &others = b.rows();
    if (sameShare(ones.hashes, others.hashes, ones.uniform, others.uniform) >= kSameRows)
        return true;
    return sameShare(a.tiles().hashes, b.tiles().hashes, a.tiles().uniform, b.tiles().uniform) >= kSameTiles;
}

void Stillness::addSample(const ComparedPicture &picture, int elapsed)
{
    if (m_last && isSamePlace(*m_last, picture))
        m_quietFor += elapsed;
    else
        m_quietFor = 0;
    m_last = picture;
}
