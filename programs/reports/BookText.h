#pragma once

#include <QDateTime>

#include "programs/reports/BookContent.h"

/// A calculation book as plain text, its lines ended by CR LF. Numbers have six decimals; in tables names, places and
/// impedances stand as they are stored, each in a field of 12 characters.
QString bookText(const BookContent& book, const QDateTime& at);

/// A text in GBK, with "?" for each character that it does not have, which is told.
QByteArray bookBytes(const QString& text);

/// Title of a book.
QString bookTitle(bool sensitivity);
/// Kind of a fault as books name it; empty for an unknown one.
QString bookFaultKind(int fType);
/// Kind of an element taken out of service, with a blank before it; empty for an unknown one.
QString bookElementKind(int flg);
