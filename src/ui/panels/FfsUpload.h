#pragma once

#include "ui/forms/frmMmcOpenControls.h"
#include "ui/panels/FfsTransfers.h"

namespace kalmo::ui {

/// Brings the chosen files into the form that the phone takes, and sends them into a folder of it. A file
/// that does not fit is told and left out; a missing converter, too little memory and a failed transfer end
/// the upload. True if all was done that the user wanted.
bool convertAndUpload(Program& program, const std::shared_ptr<obex::clsMmc>& mmc,
                      const toolkit::Progress& progress, const obex::PhonePath& to,
                      const UploadChoice& choice, std::optional<qint64> freeBytes, const OnSent& onSent);

} // namespace kalmo::ui
