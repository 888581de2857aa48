#include "programs/engine/CAutoCalFlow.h"

#include <QMap>
#include <algorithm>

#include "platform/sql/Sql.h"

namespace {

QMap<QString, std::vector<double>> resultsOf(int rno, int pno, int caseNo) {
    QMap<QString, std::vector<double>> results;
    sql::Query q;
    q.exec("SELECT Cdz,Rdz FROM RLY_RDZTEM WHERE RNo=? AND PNo=? AND Case_No=?", {rno, pno, caseNo});
    while (q.next()) results[q.text(0)].push_back(q.real(1));
    return results;
}

bool keepsSmallest(const QString& cdz) {
    static const QStringList kNames{"Udz", "Zdz", "Udz1", "Udz2", "Udz3"};
    return kNames.contains(cdz);
}

/// 0 is no result; it is the answer only where nothing else stands.
double decided(const QString& cdz, const std::vector<double>& results) {
    if (!keepsSmallest(cdz)) return *std::max_element(results.begin(), results.end());
    double smallest = 0;
    for (double value : results)
        if (value != 0 && (smallest == 0 || value < smallest)) smallest = value;
    return smallest;
}

QString sixDigits(double value) { return QString::number(value, 'g', 6); }

}  // namespace

CAutoCalFlow::CAutoCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo,
                           const QString& exeDir)
    : CStepCalFlow(rTypeNo, typeCode, workDir, caseNo, exeDir), rTypeNo_(rTypeNo) {
    relayFault().keepWorkingSettings();
}

bool CAutoCalFlow::StoreCurrentSettings(int rno, int pno) {
    const RelayTypeInfo* type = relayInput().rules().type(rTypeNo_);
    if (!type || pno < 1 || pno > 5) return true;
    const auto results = resultsOf(rno, pno, caseNo());
    QVariantList names, primary, secondary;
    for (auto it = results.constBegin(); it != results.constEnd(); ++it) {
        const SettingKind* setting = type->setting(it.key());
        if (!setting) continue;
        const double value = decided(it.key(), it.value());
        const double factor = relayFault().secondaryFactor(rno, setting->VType);
        names << it.key();
        primary << it.key() << sixDigits(value);
        secondary << it.key() << sixDigits(value * factor);
    }
    if (names.isEmpty()) return true;
    const QString column = "NDz" + QString::number(pno);
    const QString byName = "=CASE CDz" + QString(" WHEN ? THEN ?").repeated(names.size()) + " END";
    const bool stored =
        sql::Query().exec("UPDATE RLY_RLYOBJ_TEM SET " + column + "1" + byName + "," + column + "2" + byName +
                              " WHERE RNo=? AND CDz IN (" + QStringList(names.size(), "?").join(",") + ")",
                          primary + secondary + QVariantList{rno} + names);
    relayFault().workingSettingsChanged(rno);
    // From now on the working settings hold results of this run; the relays' stored ones are older.
    relayFault().setFirstWrite(0);
    return stored;
}
