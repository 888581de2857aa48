#include "programs/frame/LocationLabel.h"

#include "platform/host/Text.h"

QString knownLocationLabel(int rType, const QString& idName, const QString& iName, const QString& jName, int side) {
    const QString& node = side == 1 ? iName : jName;
    switch (rType) {
        case 0:
            return idName + Text::tr("母线 ");
        case 1:
            return idName + Text::tr("发电机 ");
        case 4:
            return idName + Text::tr("并联电容器 ");
        case 5:
            return idName + Text::tr("并联电抗器 ");
        case 6:
        case 100:
            return idName + Text::tr("线 ") + node + Text::tr("侧 ");
        case 10:
            return idName + Text::tr("变压器 ") + node + Text::tr("侧绕组 ");
        case 13:
            return idName + Text::tr("开关 ");
        default:
            return {};
    }
}

QString locationLabel(int rType, const QString& idName, const QString& iName, const QString& jName, int side) {
    const QString label = knownLocationLabel(rType, idName, iName, jName, side);
    return label.isEmpty() ? idName + " " : label;
}
