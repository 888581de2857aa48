#include "platform/host/ui/CComboBoxCaseNo.h"
