#pragma once

#include "QuilloCore/Preferences/UserDefaults.h"

namespace quillo::test {

/// What every store of settings has to do; it is empty at first.
void expectUserDefaultsContract(UserDefaults& defaults);

}  // namespace quillo::test
