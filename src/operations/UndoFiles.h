#pragma once

#include "operations/PutFilesBack.h"
#include "operations/Undo.h"

namespace kalmo::operations {

/// Puts back files, folders and rights of the phone: each place of the record as it was. Other places stay.
class UndoFiles final : public Undo
{
public:
    UndoFiles(const UndoJob& job, Record record);
    ~UndoFiles() override;

    /// Opens a connection to the phone's file system unless the client has one.
    Outcome plan() override;
    Outcome apply() override;

private:
    Cause renewPlan();

    std::shared_ptr<obex::clsMmc> m_client;
    toolkit::Progress m_progress;
    bool m_isOpenedHere = false;
    std::unique_ptr<FileAccess> m_access;
    PutBackPlan m_plan;
    QDateTime m_readAt; // of the plan
};

} // namespace kalmo::operations
