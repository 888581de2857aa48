#include "programs/frame/LocationLabel.h"

QString knownLocationLabel(int rType, const QString& idName, const QString& iName, const QString& jName, int side) {
    const QString& node = side == 1 ? iName : jName;
    switch (rType) {
        case 0:
            return idName + "母线 ";
        case 1:
            return idName + "发电机 ";
        case 4:
            return idName + "并联电容器 ";
        case 5:
            return idName + "并联电抗器 ";
        case 6:
        case 100:
            return idName + "线 " + node + "侧 ";
        case 10:
            return idName + "变压器 " + node + "侧绕组 ";
        case 13:
            return idName + "开关 ";
        default:
            return {};
    }
}

QString locationLabel(int rType, const QString& idName, const QString& iName, const QString& jName, int side) {
    const QString label = knownLocationLabel(rType, idName, iName, jName, side);
    return label.isEmpty() ? idName + " " : label;
}
