#!/usr/bin/env bash
# walls_hold.sh COMPILER ROOTS: a source that includes a header of a module that its own doesn't name doesn't compile.
# Each row: a module, a header that it may see, one that it may not.
set -u
compiler=$1 roots=$2 sources=$(dirname "$0")/../../src
failed=0
compiles() { # compiles MODULE HEADER: whether the header is found from a source of the module
    printf '#if !__has_include("%s")\n#error out of sight\n#endif\n' "$2" |
        "$compiler" -x c++ -std=c++23 -fsyntax-only -I "$roots/$1" - 2>/dev/null
}
while read -r module seen hidden; do
    compiles "$module" "$seen" || { echo "$module can't see $seen, which it names"; failed=1; }
    [ -f "$sources/$hidden" ] || { echo "$hidden is no header"; failed=1; }
    if compiles "$module" "$hidden"; then echo "$module sees $hidden, through a wall"; failed=1; fi
done <<'ROWS'
base             base/result.h             platform/platform.h
document         document/annotation.h     settings/app_settings.h
services         document/annotation.h     library/library.h
library          document/image_files.h    ui/theme.h
capture          platform/screens.h        library/library.h
capture_ui       ui/theme.h                editor/editor_view.h
editor           ui/theme.h                capture/screen_capturer.h
library_ui       pins/pins.h              editor/editor_view.h
recording_ui     ui/theme.h               steps/steps_recorder.h
steps_ui         ui/theme.h               recording/screen_recorder.h
shell            library/library.h        capture/screen_capturer.h
cli              library/library.h         platform/x11/x11_screens.h
app              platform/platform.h       platform/x11/x11_screens.h
platform_session platform/x11/x11_screens.h document/annotation.h
ROWS
[ "$failed" = 0 ] && echo "The walls hold."
exit "$failed"
