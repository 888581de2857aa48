#include "programs/workflow/RunStep.h"

void RunStep::begin(const RuleInHand& work) {
    work_ = work;
    since_.start();
    silent_.start();
    kept_ = false;
    changes_.reset();
    changes_.emplace();
}

bool RunStep::keep() {
    kept_ = changes_ && changes_->commit();
    changes_.reset();
    return kept_;
}
