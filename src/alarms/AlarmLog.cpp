#include "alarms/AlarmLog.h"

Q_LOGGING_CATEGORY(lcAlarms, "verdaly.alarms")
