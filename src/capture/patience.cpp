#include "capture/patience.h"

namespace {

// Milliseconds. Most pages load a picture or fade rows in within the first; where they do, slower ones among
// them are worth more.
constexpr int kFirstWait = 800;
constexpr int kProvenWait = 2500;
constexpr int kTries = 2; // in vain in a row, before a sign is no longer believed

} // namespace

bool Patience::shows(const Signs &signs, Sign sign)
{
    return sign == Changing ? signs.changes : signs.hasBlank;
}

bool Patience::isTrusted(Sign sign) const
{
    return m_experience[sign].inVain < kTries;
}

bool Patience::expectsMore(const Signs &signs) const
{
    return (signs.changes && isTrusted(Changing)) || (signs.hasBlank && isTrusted(Blank));
}

bool Patience::isWorthIt(const Signs &signs, int rested)
{
    if (m_waitsFor) {
        Experience &experience = m_experience[*m_waitsFor];
        if (!shows(signs, *m_waitsFor)) {
            experience = {.hasHelped = true, .inVain = 0};
            m_waitsFor.reset();
        } else if (rested - m_since >= (experience.hasHelped ? kProvenWait : kFirstWait)) {
            ++experience.inVain;
            m_waitsFor.reset();
            return false;
        } else {
            return true;
        }
    }
    for (const Sign sign : {Changing, Blank}) {
        if (shows(signs, sign) && isTrusted(sign)) {
            m_waitsFor = sign;
            m_since = rested;
            return true;
        }
    }
    return false;
}
