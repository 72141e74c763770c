#include "settings/SettingsLog.h"

Q_LOGGING_CATEGORY(lcSettings, "verdaly.settings")
