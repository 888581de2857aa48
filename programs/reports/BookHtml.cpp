#include "programs/reports/BookHtml.h"

bool exportBookHtml(const BookRequest&, const QString&) { return false; }
