#pragma once

#include <QString>

/// Which calculation book is wanted.
struct BookRequest {
    int caseNo = 0;  ///< under which the results stand; 0 for those of a sensitivity run
    int rTypeNo = 0;
    QString typeText;          ///< relay type as the user knows it
    QString caseName;          ///< name of the case, or what stands in its place
    bool sensitivity = false;  ///< the book of the sensitivity parameters, else that of the settings
    QString workDir{};         ///< where the reasons of rules without result lie; may be empty
};
