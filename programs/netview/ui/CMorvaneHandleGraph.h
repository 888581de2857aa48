#pragma once

#include <functional>

#include "platform/host/ui/CHandleGraph.h"
#include "programs/netview/DiagramPlaces.h"

class CMorvaneObject;

/// What the relay module does with gestures on the diagram: a click on a label tells the location and its coordination
/// in the dock, a double click opens the relays of the place, the right button offers both dialogs of the module.
class CMorvaneHandleGraph : public CHandleGraph {
    Q_OBJECT
  public:
    explicit CMorvaneHandleGraph(CMorvaneObject* parent);

    static CHandleGraphInfo popupInfo;  ///< element of the last popup menu

    bool OnLabelClicked(const CHandleGraphInfo& info) override;
    bool OnElementOpen(const CHandleGraphInfo& info) override;
    void OnContextMenu(const CHandleGraphInfo& info, QMenu* menu) override;
    bool OnHandleDefault() override { return true; }

    /// Opens the relays of a place. \return whether they were accepted
    using RelayDialog = std::function<bool(const DiagramPlace&)>;
    /// Without one OnElementOpen() opens nothing and the menu does not offer it.
    void setRelayDialog(RelayDialog dialog) { relayDialog_ = std::move(dialog); }

  public slots:
    void PopMenuSetRly();

  private:
    CMorvaneObject* parent_;
    RelayDialog relayDialog_;
};
