#include "programs/netview/ui/CMorvaneHandleGraph.h"

#include <QMenu>

#include "platform/host/WinDockFeedback.h"
#include "programs/frame/ui/CMorvaneObject.h"

CHandleGraphInfo CMorvaneHandleGraph::popupInfo;

namespace {

void tell(const QString& line) {
    WinDockFeedback::ShowMessage(line.toUtf8().constData(), "", "", "", WinDockFeedback::Diagram);
}

}  // namespace

CMorvaneHandleGraph::CMorvaneHandleGraph(CMorvaneObject* parent) : CHandleGraph(parent), parent_(parent) {}

bool CMorvaneHandleGraph::OnLabelClicked(const CHandleGraphInfo& info) {
    if (info.recid < 1 || !parent_->realTime()) return true;
    const DiagramPlace place = placeOfLabel(*parent_->realTime(), info.recid);
    tell(CMorvaneObject::RlyDsp(place.at.ID_Name, place.at.I_Name, place.at.J_Name, place.rType, place.at.Side));
    if (CMorvaneObject::iRlyDspAss == 0) return true;
    for (const QString& line : coordinationLines(place)) tell(line);
    return true;
}

bool CMorvaneHandleGraph::OnElementOpen(const CHandleGraphInfo& info) {
    if (!parent_->isEditing()) return false;
    std::optional<DiagramPlace> place;
    if (info.recid < 1)
        place = placeOfElement(info);
    else if (parent_->realTime())
        place = placeOfLabel(*parent_->realTime(), info.recid);
    if (!place || place->rType < 0 || !relayDialog_) return false;
    if (relayDialog_(*place)) parent_->RedrawLabels();
    return true;
}

void CMorvaneHandleGraph::OnContextMenu(const CHandleGraphInfo& info, QMenu* menu) {
    if (info.name.isEmpty() || !parent_->isEditing()) return;
    popupInfo = info;
    if (relayDialog_) menu->addAction(tr("保护设置"), this, &CMorvaneHandleGraph::PopMenuSetRly);
    menu->addAction(tr("显示设置"), parent_, &CMorvaneObject::RlyPopupMenuSetDsp);
}

void CMorvaneHandleGraph::PopMenuSetRly() { OnElementOpen(popupInfo); }
