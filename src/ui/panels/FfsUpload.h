#pragma once

#include "ui/forms/frmMmcOpenControls.h"
#include "ui/panels/FfsTransfers.h"

namespace kalmo::ui {

/// Converts the chosen files for the phone, and sends them into a folder of it, with one progress for both.
/// Reports an unfit file and leaves it out. A missing converter, a full disk, too little memory in the phone
/// and a failed transfer end the upload.
void convertAndUpload(Program& program, const std::shared_ptr<obex::clsMmc>& mmc,
                      const toolkit::Progress& progress, const obex::PhonePath& to,
                      const UploadChoice& choice, std::optional<qint64> freeBytes, const OnSent& onSent);

} // namespace kalmo::ui
