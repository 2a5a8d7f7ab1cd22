#pragma once

#include "app/delivery.h"
#include "base/pending_work.h"
#include "library/library.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "support/stage.h"

// A Library and the road of what was captured into it.
struct DeliveryStage : Stage {
    DeliveryStage() { prefs.setSaveFolder(home.path("Shots")); }

    Library library{prefs, machine.trash, clock};
    TextRecognizer recognizer{machine.text, machine.faces};
    ClaudeClient claude{machine.http, prefs};
    PendingWork pending;
    Activity activity{clock};
    Delivery delivery{
        {activity, library, machine.pasteboard, machine.sounds, recognizer, claude, prefs, notices, pending}};
};
