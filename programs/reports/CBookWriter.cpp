#include "programs/reports/CBookWriter.h"

CBookWriter::CBookWriter(int caseNo, int rTypeNo, const QString& typeText, const QString& caseName)
    : caseNo_(caseNo), rTypeNo_(rTypeNo), typeText_(typeText), caseName_(caseName) {}

bool CBookWriter::WriteSettingBook(const QString&) { return caseNo_ < 0 && rTypeNo_ < 0; }
bool CBookWriter::WriteKlmBook(const QString&) { return false; }
double CBookWriter::CalKlmForBook(int, int, int, const QString&, double) { return -1.0; }
