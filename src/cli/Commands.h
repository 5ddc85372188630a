#pragma once

#include "cli/Command.h"

namespace kalmo::cli {

/// The functions of the command table.
ExitStatus runPorts(Job& job);
ExitStatus runFind(Job& job);
ExitStatus runStatus(Job& job);
ExitStatus runClockSet(Job& job);
ExitStatus runPhonebookRead(Job& job);
ExitStatus runPhonebookWrite(Job& job);
ExitStatus runPhonebookImport(Job& job);
ExitStatus runPhonebookExport(Job& job);
ExitStatus runPhonebookAdd(Job& job);
ExitStatus runPhonebookSet(Job& job);
ExitStatus runPhonebookDelete(Job& job);
ExitStatus runProvidersRead(Job& job);
ExitStatus runProvidersWrite(Job& job);
ExitStatus runProvidersImport(Job& job);
ExitStatus runProvidersExport(Job& job);
ExitStatus runRingtones(Job& job);
ExitStatus runRingtonesSet(Job& job);
ExitStatus runCalendarRead(Job& job);
ExitStatus runNotesRead(Job& job);
ExitStatus runAreaCodes(Job& job);
ExitStatus runAreaCodesSet(Job& job);
ExitStatus runFilesLs(Job& job);
ExitStatus runFilesGet(Job& job);
ExitStatus runFilesPut(Job& job);
ExitStatus runFilesRm(Job& job);
ExitStatus runFilesMkdir(Job& job);
ExitStatus runFilesMv(Job& job);
ExitStatus runFilesDf(Job& job);
ExitStatus runFilesAttr(Job& job);
ExitStatus runHistory(Job& job);
ExitStatus runUndo(Job& job);
ExitStatus runPreview(Job& job);
ExitStatus runMediaSound(Job& job);
ExitStatus runMediaMelody(Job& job);
ExitStatus runMediaPicture(Job& job);
ExitStatus runRecover(Job& job);

} // namespace kalmo::cli
