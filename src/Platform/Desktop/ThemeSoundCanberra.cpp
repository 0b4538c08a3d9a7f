// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/ThemeSound.h"

#include "Platform/ApplicationID.h"

#include <canberra.h>
#include <dlfcn.h>

namespace {

extern "C" void ignoreMessage(const char *, int, const char *, int, const char *, ...) {}

// Where there is no sound card, the sound system's library says so eight times on the terminal. It
// is looked for at run time, as the player loads it only where it wants it.
void silenceSoundSystem()
{
    using Handler = void (*)(const char *, int, const char *, int, const char *, ...);
    using SetHandler = int (*)(Handler);
    // Never closed: the handler has to stay.
    if (void *library = ::dlopen("libasound.so.2", RTLD_LAZY | RTLD_LOCAL)) {
        if (void *symbol = ::dlsym(library, "snd_lib_error_set_handler")) {
            reinterpret_cast<SetHandler>(symbol)(ignoreMessage);
        }
    }
}

ca_context *makeContext()
{
    silenceSoundSystem();
    ca_context *context = nullptr;
    if (::ca_context_create(&context) != CA_SUCCESS) {
        return nullptr;
    }
    ::ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Morvix", CA_PROP_APPLICATION_ID,
                              applicationID.data(), nullptr);
    return context;
}

/// Made at the first sound and never destroyed: that would unload the sound system's driver while
/// its thread may still be on its way out of it.
ca_context *context()
{
    static ca_context *const context = makeContext();
    return context;
}

} // namespace

bool ThemeSound::play(const char *name)
{
    return context() != nullptr &&
           ::ca_context_play(context(), 0, CA_PROP_EVENT_ID, name, nullptr) == CA_SUCCESS;
}
