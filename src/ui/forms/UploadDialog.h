#pragma once

#include "ui/forms/frmMmcOpenControls.h"

namespace kalmo::ui {

/// Lets the user choose files for a folder of the phone, in a file dialog with `frmMmcOpenControls` at its
/// foot. Nothing if he cancels.
std::optional<UploadChoice> chooseUpload(Program& program, const UploadQuestion& question, QWidget* parent);

} // namespace kalmo::ui
