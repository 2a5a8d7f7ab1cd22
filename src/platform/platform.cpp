#include "platform/platform.h"

#include "platform/accessible_elements.h"
#include "platform/desktop_activation.h"
#include "platform/desktop_appearance.h"
#include "platform/desktop_parts.h"
#include "platform/face_engine.h"
#include "platform/hot_keys.h"
#include "platform/http.h"
#include "platform/input_monitor.h"
#include "platform/login_item.h"
#include "platform/movies.h"
#include "platform/pasteboard.h"
#include "platform/paths.h"
#include "platform/permissions.h"
#include "platform/pointer_control.h"
#include "platform/press_pictures.h"
#include "platform/screen_films.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/secrets.h"
#include "platform/sound_output.h"
#include "platform/sound_sources.h"
#include "platform/shortcut_holders.h"
#include "platform/sounds.h"
#include "platform/speech_engine.h"
#include "platform/text_engine.h"
#include "platform/trash.h"
#include "platform/workspace.h"

Platform::Platform() = default;
Platform::Platform(Platform &&) noexcept = default;
Platform &Platform::operator=(Platform &&) noexcept = default;
Platform::~Platform() = default;
