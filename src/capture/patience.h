#pragma once

#include <array>
#include <optional>

// For how long a page that has come to rest is still waited for: where it goes on changing, as rows do that
// fade in, or where something in it is blank, as the place of a picture is that still loads. Learns from the
// page whether waiting helps, so that a film or areas that stay blank cost little.
class Patience {
public:
    struct Signs {
        bool changes = false;
        bool hasBlank = false;
    };

    // Asked with every sample of a page that rests for `rested` milliseconds since the wheel was turned.
    bool isWorthIt(const Signs &signs, int rested);
    // The next place of the page.
    void begin() { m_waitsFor.reset(); }
    bool isWaiting() const { return m_waitsFor.has_value(); }
    // Whether the page has shown that waiting for such signs may help.
    bool expectsMore(const Signs &signs) const;

private:
    enum Sign { Changing, Blank };
    struct Experience {
        bool hasHelped = false;
        int inVain = 0;
    };
    static bool shows(const Signs &signs, Sign sign);
    bool isTrusted(Sign sign) const;

    std::array<Experience, 2> m_experience;
    std::optional<Sign> m_waitsFor;
    int m_since = 0;
};
