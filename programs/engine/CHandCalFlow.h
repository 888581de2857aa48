#pragma once

#include "programs/engine/CStepCalFlow.h"

/// The manual calculation: the user looks at each relay part before the next.
class CHandCalFlow : public CStepCalFlow {
  public:
    using CStepCalFlow::CStepCalFlow;

    int shownRNo = -1;  ///< relay and part that the window shows
    int shownPNo = -1;
};
