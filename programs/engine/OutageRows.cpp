#include "programs/engine/OutageRows.h"

#include "platform/host/Text.h"
#include "programs/frame/Messages.h"

void numberOutages(const QVector<ElementName>& outages, int highest, const QString& missing,
                   const std::function<bool(const BranchRow&)>& isThere,
                   const std::function<void(int mType, const BranchRow&)>& add) {
    int mType = highest == 0 ? kFirstOutage : highest + 1;
    if (highest != 0 && mType + kRowsOfOutage - 1 > kLastOutage) return ReportError(Text::tr(kTooManyOutages), 0);
    const auto branches = BranchTable::current();
    for (const ElementName& name : outages) {
        const BranchRow* element = branches->find(name.idName, name.iName, name.jName);
        if (!element) {
            ReportError(Text::tr("检修元件") + name.idName + missing, 1);
            continue;
        }
        if (isThere(*element)) continue;
        if (mType > kLastOutage) return ReportError(Text::tr(kTooManyOutages), 0);
        add(mType++, *element);
    }
}
