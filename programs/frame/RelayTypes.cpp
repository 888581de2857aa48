#include "programs/frame/RelayTypes.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/frame/TableNames.h"

const SettingKind* RelayTypeInfo::setting(const QString& cdz) const {
    const auto it = std::find_if(settings.begin(), settings.end(), [&](const auto& s) { return s.Cdz == cdz; });
    return it == settings.end() ? nullptr : &*it;
}

QHash<int, RelayTypeInfo> readRelayTypes() {
    QHash<int, RelayTypeInfo> types;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT RTypeNo,RTypeCode,RType,NPart,DzNo,Cdz,VType,DspCdz FROM RTYPE ORDER BY RTypeNo,DzNo");
    while (query.next()) {
        RelayTypeInfo& type = types[query.number(0)];
        type.RTypeNo = query.number(0);
        type.RTypeCode = query.text(1);
        type.RType = query.number(2);
        type.NPart = query.number(3);
        type.settings.append({query.number(4), query.text(5), query.number(6), query.text(7)});
    }
    return types;
}

bool offeredForCases(int rTypeNo) {
    static const int kCoordinationOnly[] = {0, 11, 22, 33, 36, 37, 50};
    return std::find(std::begin(kCoordinationOnly), std::end(kCoordinationOnly), rTypeNo) ==
           std::end(kCoordinationOnly);
}
