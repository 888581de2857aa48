#include "programs/reports/BookWords.h"

#include "programs/frame/LocationLabel.h"
#include "programs/reports/BookText.h"
#include "programs/reports/Expression.h"

namespace {

constexpr int kFirstOpen = 5;  // of `FType`: from here on phases are open and have no fault impedance

QString elementWords(const BookElement& element) {
    if (element.ID_Name.isEmpty()) return "当前网络中没有的元件";
    if (element.I_Name == element.J_Name) return element.ID_Name + "（" + element.I_Name + "）";
    return element.ID_Name + "（" + element.I_Name + " 至 " + element.J_Name + "）";
}

QString impedanceWords(const BookFault& fault) {
    if (fault.FType >= kFirstOpen || (fault.R.toDouble() == 0 && fault.X.toDouble() == 0)) return {};
    return "（R=" + fault.R + "，X=" + fault.X + "）";
}

QString faultWords(const BookFault& fault) {
    const BookElement& at = fault.element;
    const QString place = at.ID_Name.isEmpty() ? elementWords(at) : at.ID_Name + " 距 " + at.I_Name;
    return place + " " + QString::number(fault.K_Loc) + "% 处" + bookFaultKind(fault.FType).trimmed() +
           impedanceWords(fault);
}

QString modeWords(const BookDecision& decided) {
    if (decided.SysNo == 0) return "网络现状";
    return decided.mode == "0" ? "已删除的运行方式 " + QString::number(decided.SysNo) : decided.mode;
}

}  // namespace

QString decisionWords(const BookDecision& decided) {
    QStringList faults, words{modeWords(decided)};
    for (const BookFault& fault : decided.faults) faults.append(faultWords(fault));
    if (!faults.isEmpty()) words.append(faults.join("，同时 "));
    if (const auto& out = decided.outage)
        words.append("检修 " + out->ID_Name + "（" + bookElementKind(out->Flg).trimmed() + "）");
    return words.join("，");
}

QString quantityWords(std::optional<double> value, const QString& unit) {
    if (!value) return "—";
    return unit.isEmpty() ? shownNumber(*value) : shownNumber(*value) + " " + unit;
}

QStringList choiceWords(const BookVariable& variable, int rType) {
    QStringList words;
    for (const BookDecision& decided : variable.faults) words.append(decisionWords(decided));
    for (const BookElement& element : variable.elements) words.append(elementWords(element));
    for (const Location& at : variable.relays)
        words.append(locationLabel(rType, at.ID_Name, at.I_Name, at.J_Name, at.Side).trimmed());
    words.removeDuplicates();
    return words;
}
