#pragma once

// The keyboard extension's header, which names fields by a word of this language.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#define explicit explicitly
#include <xcb/xkb.h>
#undef explicit
#pragma clang diagnostic pop
