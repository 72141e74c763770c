#include "store/StoreLog.h"

Q_LOGGING_CATEGORY(lcStore, "verdaly.store")
