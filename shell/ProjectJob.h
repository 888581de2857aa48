#pragma once

#include <QObject>
#include <QString>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

#include "platform/import/Import.h"

namespace shell {

/// Long work on a project that is not open: making it, bringing a network into it, copying it. It runs in a thread of
/// its own with connections of its own, so that the window stays responsive; the reading of a network can be stopped at
/// any time, the work in the database between its steps.
class ProjectJob : public QObject {
    Q_OBJECT
  public:
    struct Wish {
        enum class Kind { Create, Import, SaveAs } kind = Kind::Create;
        QString name;     ///< of the project to be made or filled
        QString oldName;  ///< of the project to be copied
        QString source;   ///< network to be read; empty: none
        import::Options options;
        bool demonstration = false;  ///< with the relays and cases of the demonstration
    };
    enum class Outcome { Done, Failed, Stopped };

    explicit ProjectJob(QObject* parent = nullptr);
    ~ProjectJob() override;

    /// Reads the network of the wish, if there is one, without any database. networkRead() follows.
    void read(const Wish& wish);
    /// Does the rest with what was read. stored() follows.
    void store();
    void stop() { stopped_ = true; }
    [[nodiscard]] bool isRunning() const { return thread_ != nullptr; }

    [[nodiscard]] const Wish& wish() const { return wish_; }
    [[nodiscard]] const import::Report& report() const { return report_; }
    /// Why the last work failed, one sentence; empty when the dock has it.
    [[nodiscard]] QString reason() const { return reason_; }

  signals:
    void progress(int percent, const QString& what);
    void networkRead(shell::ProjectJob::Outcome outcome);
    void stored(shell::ProjectJob::Outcome outcome);

  private:
    using Ended = void (ProjectJob::*)(Outcome);
    void run(const std::function<bool()>& work, Ended ended);
    bool readNetwork();
    bool makeProject();
    bool fillProject();
    bool storeAll();
    void tell(int percent, const QString& what);

    Wish wish_;
    std::unique_ptr<QThread> thread_;
    std::atomic<bool> stopped_{false};
    host::NetworkModel network_;
    import::Report report_;
    QString reason_;
};

}  // namespace shell
