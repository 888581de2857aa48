#pragma once

#include <optional>

#include "programs/reports/BookContent.h"
#include "programs/reports/Expression.h"

/// A rule's formula text ("Zdz=Kk×Zl，t=t'I+dt") for one of its settings, with the numbers of the parameters and
/// variables in place of their names. A variable goes by the last word of its `Cin`.
/// \return nothing when the text cannot be read, or has a name that stands for nothing or for two things
std::optional<Expression> formulaWithNumbers(const BookRule& rule, const QString& cdz);

/// What the rule's lines make of the same numbers; docs/rule-language.md tells their meaning.
/// \return nothing when they use what the book does not know
std::optional<Expression> linesWithNumbers(const BookRule& rule, const QString& cdz);

/// The first of the two whose numbers give the result that stands in the book; empty when neither does.
QString numbersBehind(const BookRule& rule, const BookResult& result);
