// A target without sources of its own still needs one.
