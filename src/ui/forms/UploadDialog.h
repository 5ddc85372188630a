#pragma once

#include "ui/forms/frmMmcOpenControls.h"

namespace kalmo::ui {

/// Lets the user choose files for a folder of the phone, in a file dialog with `frmMmcOpenControls` at its
/// foot. Where files are given, a dialog with that panel alone asks to send them. Nothing if he cancels.
std::optional<UploadChoice> chooseUpload(Program& program, const UploadQuestion& question, QWidget* parent);

} // namespace kalmo::ui
