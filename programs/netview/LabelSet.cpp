#include "programs/netview/LabelSet.h"

#include <algorithm>

#include "platform/rtdb/dbCursor.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/sql/Sql.h"

namespace {

using norvdb::addition_graph;

constexpr int kLongestText = 3072;  // bytes
constexpr int kVirtualRelay = 6;
constexpr int kOtherElement = 12;

QString placeOf(const addition_graph& label) {
    const QChar between('\x1f');
    return label.id_name + between + label.i_name + between + label.j_name + between +
           QString("%1,%2,%3").arg(label.type_info).arg(label.percent_pos).arg(label.ele_num);
}

/// Kind of element under the label and the label's place along it, as the host wants them.
void sit(addition_graph& label, int rType, int side) {
    const bool atI = side == 1;
    label.ele_num = rType;
    label.percent_pos = 50;
    switch (rType) {
        case 0:
            label.type_info = 9;
            break;
        case 1:
            label.type_info = 11;
            break;
        case 4:
            label.type_info = 10;
            break;
        case 6:
            label.type_info = 7;
            label.percent_pos = atI ? 3 : 97;
            break;
        case 10:
            label.type_info = 8;
            label.percent_pos = atI ? 30 : 70;
            break;
        default:
            label.type_info = kOtherElement;
    }
}

}  // namespace

void LabelSet::add(const Location& at, int rType, const QString& text) {
    addition_graph label;
    sit(label, rType, at.Side);
    place(label, at, text);
}

void LabelSet::addVirtual(const Location& at, const QString& text) {
    addition_graph label;
    label.ele_num = kVirtualRelay;
    label.type_info = kOtherElement;
    label.percent_pos = at.Side == 1 ? 3 : 97;
    place(label, at, text);
}

void LabelSet::place(addition_graph label, const Location& at, const QString& text) {
    label.text = sql::cutToGbk(text, kLongestText);
    label.style2 = 4;
    label.style3 = 1;
    label.flags = live;
    label.module_num = module;
    label.id_name = at.ID_Name;
    label.i_name = at.I_Name;
    label.j_name = at.J_Name;
    const QString key = placeOf(label);
    if (byPlace_.contains(key)) return;
    byPlace_.insert(key, labels_.size());
    labels_.push_back(label);
}

bool LabelSet::store(dbDatabase& realTime, bool anew) const {
    dbCursor<addition_graph> cursor(realTime, dbCursorForUpdate);
    std::vector<bool> stands(labels_.size(), false);
    int highest = 1;
    bool stored = true;
    cursor.select(dbQuery() << "module_num=" << module);
    while (cursor.next()) {
        addition_graph& record = *cursor.get();
        highest = std::max(highest, record.recid);
        const auto wanted = byPlace_.constFind(placeOf(record));
        const bool draw = wanted != byPlace_.cend() && !stands[*wanted];
        if (draw) stands[*wanted] = true;
        const int flags = draw ? record.flags | live : record.flags & ~live;
        const QString text = draw && anew ? labels_[*wanted].text : record.text;
        if (flags == record.flags && text == record.text) continue;
        record.flags = flags;
        record.text = text;
        stored = cursor.update() && stored;
    }
    for (std::size_t k = 0; k < labels_.size(); ++k) {
        if (stands[k]) continue;
        addition_graph label = labels_[k];
        label.recid = ++highest;
        stored = cursor.insert(label) && stored;
    }
    return stored;
}
