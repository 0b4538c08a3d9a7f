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

} // namespace

struct ThemeSound::Player {
    Player()
    {
        silenceSoundSystem();
        if (::ca_context_create(&context) == CA_SUCCESS) {
            ::ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Morvix",
                                      CA_PROP_APPLICATION_ID, applicationID.data(), nullptr);
        }
    }
    Player(const Player &) = delete;
    Player &operator=(const Player &) = delete;
    ~Player()
    {
        if (context != nullptr) {
            ::ca_context_destroy(context);
        }
    }

    ca_context *context = nullptr;
};

ThemeSound::ThemeSound() = default;
ThemeSound::~ThemeSound() = default;

bool ThemeSound::play(const char *name)
{
    if (m_player == nullptr) {
        m_player = std::make_unique<Player>();
    }
    return m_player->context != nullptr &&
           ::ca_context_play(m_player->context, 0, CA_PROP_EVENT_ID, name, nullptr) == CA_SUCCESS;
}
