// How a message reaches the artist: as a box, or as advice in the record of the run.
#pragma once

#include "messages/message.h"
#include "platform/message_box.h"

// Shows the message as its kind wants. parent is the host's window handle or null; advice needs none.
void Tell(void* parent, const eMessage& message);

// A box that the system has always shown in a form of its own: takes title, icon, buttons and parent from
// `form`.
platform::eBoxAnswer ShowAs(const eMessage& message, platform::eMessageBox form);

template <class... Values>
void Tell(void* parent, eMessageId id, eMessagePlace place, const Values&... values) {
    Tell(parent, MakeMessage(id, std::move(place), values...));
}
