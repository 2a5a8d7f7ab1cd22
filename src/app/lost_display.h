#pragma once

// While it lives, a display that goes away is the ordinary end of the program: what is being written is
// finished, the session is closed in the log, and the exit status is 0. The toolkit warns and calls exit()
// then, in the middle of whatever it does, and destructors would ask a display that isn't there.
class LostDisplay {
public:
    LostDisplay();
    ~LostDisplay();
    LostDisplay(const LostDisplay &) = delete;
    LostDisplay &operator=(const LostDisplay &) = delete;
};
