#pragma once

#include <QList>

#include "platform/host/ui/ElementPicker.h"

class QSqlDatabase;

/// The branch picker.
class WinDlgCalBranchChoose : public ElementPicker {
    Q_OBJECT
  public:
    /// \param mode    1 base tables ("CDB_ACLINEBAK"), 3 calculation tables ("L2_0"); both kinds are told by their
    /// names \param kinds   of calculation tables: 6 lines, 10 two-winding, 12 three-winding transformers; empty: all
    WinDlgCalBranchChoose(int mode, QSqlDatabase* database, const QList<QString>& tables, QWidget* parent = nullptr,
                          const char* name = nullptr, bool modal = true, uint flags = 0);
    WinDlgCalBranchChoose(int mode, QSqlDatabase* database, const QList<QString>& tables, const QList<int>& kinds,
                          QWidget* parent = nullptr, const char* name = nullptr, bool modal = true, uint flags = 0);

    /// Calculation tables are those of this load-flow case.
    void SetLFCase_No(int number) { loadFlowCase_ = number; }
    /// Runs modally; the branch given, if any, is the current one at first.
    /// \return 0 when a branch was chosen; the three fields have it then, else they are empty
    int ChooseBranch(const QString& name, const QString& iName, const QString& jName);

    QString ElementName;
    QString INodeName;
    QString JNodeName;

  private:
    QString connection_;
    QList<QString> tables_;
    QList<int> kinds_;
    int loadFlowCase_ = 0;
};
