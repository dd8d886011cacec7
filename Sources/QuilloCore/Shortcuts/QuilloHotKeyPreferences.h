#pragma once

#include "QuilloCore/Preferences/UserDefaults.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyConfiguration.h"

namespace quillo::QuilloHotKeyPreferences {

/// The stored pair; the defaults when none is stored, or one that cannot be read or used. Never throws, never writes.
QuilloHotKeyConfiguration load(const UserDefaults& defaults);

/// Throws what the store throws.
void save(const QuilloHotKeyConfiguration& configuration, UserDefaults& defaults);

}  // namespace quillo::QuilloHotKeyPreferences
