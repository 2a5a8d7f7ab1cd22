#include "capture/stillness.h"

namespace {
// Scrolled text changes nearly all rows that are not blank, a caret or a spinner a few.
constexpr double kSameShare = 0.9;
} // namespace

bool Stillness::isSamePlace(const RowSignatures &a, const RowSignatures &b)
{
    if (a.hashes.size() != b.hashes.size())
        return false;
    int telling = 0;
    int same = 0;
    for (size_t row = 0; row < a.hashes.size(); ++row) {
        if (a.uniform[row] && b.uniform[row] && a.hashes[row] == b.hashes[row])
            continue;
        ++telling;
        same += a.hashes[row] == b.hashes[row];
    }
    return same >= kSameShare * telling;
}

void Stillness::addSample(RowSignatures rows, int elapsed)
{
    if (m_last && isSamePlace(*m_last, rows))
        m_quietFor += elapsed;
    else
        m_quietFor = 0;
    m_last = std::move(rows);
}
