// The table of all commands.

#include "cli/Commands.h"

namespace kalmo::cli {

namespace {

const Option outputOption{u"--output", u"-o", u"FILE", u"save the entries in a file instead of showing them"};
const Option organizerOption{u"--output", u"-o", u"FILE", u"save them in a file instead of showing them"};
const Option trimOption{u"--trim", u"", u"SECONDS", u"keep the start of a sound only; 0 for all"};
const Option qualityOption{
    u"--quality", u"", u"Q", u"quality of a JPEG: 60, 80 or 100; 80 without it", {u"60", u"80", u"100"}};
const Option forceOption{u"--force", u"", u"", u"replace OUT without a question"};
const Option dryRunOption{u"--dry-run", u"", u"", u"only say what would be added, changed and removed"};

const Argument importArgument{
    u"FILE", u"a .csv, .txt or .tel file, or an address book: .wab, .vcf or a folder of .vcf"};
const Option importDryRunOption{u"--dry-run", u"", u"", u"only show the preview"};

constexpr QStringView writeDetails =
    u"What the phone holds is read first and saved as a backup in the storage folder. Then\n"
    u"the list in the phone is erased and written anew, read back and compared. If writing\n"
    u"fails half-way, writing the backup restores what was there.\n";

constexpr QStringView phonebookWriteDetails =
    u"The phonebook is read first and saved as a backup in the storage folder. A classic\n"
    u"phonebook is then erased and written anew. One of vCards is made equal to the file:\n"
    u"contacts are matched by LUID, by equal content, by name, and those that are the same\n"
    u"are left alone. In the end the phonebook is read back and compared.\n";

constexpr QStringView importDetails =
    u"The phonebook is read first, and rows that it holds already are left out. Rows with an\n"
    u"x are imported after a question; \"undo\" takes an import back.\n";

constexpr QStringView exportDetails =
    u"FILE ends in .csv, .xlsx, .docx, .html, .htm or .vcf. A file that is there already is\n"
    u"replaced after a question, and stays if anything fails.\n";

constexpr QStringView changeDetails =
    u"What the phone holds is read first and saved as a backup in the storage folder, from\n"
    u"which \"phonebook add\" and \"phonebook set\" can restore a contact.\n";

constexpr QStringView pathDetails =
    u"Paths of the phone start at its root: Pictures/a.bmp, or Mobile:\\Pictures\\a.bmp.\n";
constexpr QStringView batchDetails =
    u"Paths of the phone start at its root: Pictures/a.bmp, or Mobile:\\Pictures\\a.bmp.\n"
    u"A file that is there already is replaced after a question. After one that fails the\n"
    u"rest is tried all the same; the exit status is the highest that one of them has.\n";

constexpr QStringView mediaDetails =
    u"Needs no handset; \"files put --convert\" does the same on the way to one.\n";

const std::vector<Command> allCommands = {
    {.words = u"ports", .help = u"list the serial ports of this machine", .run = runPorts},
    {.words = u"find", .help = u"find the handset and say what it is", .run = runFind},
    {.words = u"status", .help = u"show device data, signal, battery and clock", .run = runStatus},
    {.words = u"clock set",
     .help = u"set the handset's clock to this machine's time",
     .handset = &clockHandset,
     .run = runClockSet},
    {.words = u"phonebook read",
     .help = u"show the phonebook, or save it in a file",
     .options = {outputOption},
     .details = u"FILE ends in .json, or as the window saves it in .tel for a classic phonebook, in .csv\n"
                u"for one of vCards, which can be saved as .vcf for other programs too.\n",
     .run = runPhonebookRead},
    {.words = u"phonebook add",
     .help = u"add the contacts of a file",
     .arguments = {{u"FILE", u"a .csv, .json or .vcf file"}},
     .details = changeDetails,
     .handset = &vcardHandset,
     .run = runPhonebookAdd},
    {.words = u"phonebook set",
     .help = u"replace a contact by the one in a file",
     .arguments = {{u"LUID", u"the phone's reference of the contact, as read shows it"},
                   {u"FILE", u"a .csv, .json or .vcf file with one contact"}},
     .details = changeDetails,
     .handset = &vcardHandset,
     .run = runPhonebookSet},
    {.words = u"phonebook delete",
     .help = u"delete contacts",
     .arguments = {{u"LUID", u"the phone's reference of a contact, as read shows it", {}, Count::OneOrMore}},
     .details = changeDetails,
     .handset = &vcardHandset,
     .run = runPhonebookDelete},
    {.words = u"phonebook write",
     .help = u"replace the phonebook by the entries of a file",
     .arguments = {{u"FILE", u"a .tel or .json file; for vCards a .json, .csv or .vcf file"}},
     .options = {dryRunOption},
     .details = phonebookWriteDetails,
     .run = runPhonebookWrite},
    {.words = u"phonebook import",
     .help = u"add the entries of another program's file to the phonebook",
     .arguments = {importArgument},
     .options = {importDryRunOption},
     .group = &importOptionGroup(),
     .details = importDetails,
     .run = runPhonebookImport},
    {.words = u"phonebook export",
     .help = u"make a table, a page or cards of the phonebook",
     .arguments = {{u"FILE", u"file to make; its ending says of what kind"}},
     .group = &exportOptionGroup(),
     .details = exportDetails,
     .run = runPhonebookExport},
    {.words = u"providers read",
     .help = u"show the list of call-by-call providers, or save it in a file",
     .options = {outputOption},
     .details = u"FILE ends in .prv (as the window saves it) or .json.\n",
     .handset = &classicHandset,
     .run = runProvidersRead},
    {.words = u"providers write",
     .help = u"replace the list of providers by the entries of a file",
     .arguments = {{u"FILE", u"a .prv or .json file"}},
     .options = {dryRunOption},
     .details = writeDetails,
     .handset = &classicHandset,
     .run = runProvidersWrite},
    {.words = u"providers import",
     .help = u"add a file of another program to the list of providers",
     .arguments = {importArgument},
     .options = {importDryRunOption},
     .group = &importOptionGroup(),
     .details = importDetails,
     .handset = &classicHandset,
     .run = runProvidersImport},
    {.words = u"providers export",
     .help = u"make a table, a page or cards of the list of providers",
     .arguments = {{u"FILE", u"file to make; its ending says of what kind"}},
     .group = &exportOptionGroup(),
     .details = exportDetails,
     .handset = &classicHandset,
     .run = runProvidersExport},
    {.words = u"ringtones",
     .help = u"show ringtones, volumes and the handset's own melodies",
     .handset = &ringingHandset,
     .run = runRingtones},
    {.words = u"ringtones set",
     .help = u"set the ringtone and volume of an event",
     .arguments = {{u"EVENT",
                    u"external, internal, appointment or alarm",
                    {u"external", u"internal", u"appointment", u"alarm"}},
                   {u"TONE", u"a melody by its name, or 1 to 10"},
                   {u"VOLUME", u"1 to 5, or 6 for rising", {u"1", u"2", u"3", u"4", u"5", u"6", u"rising"}}},
     .handset = &ringingHandset,
     .run = runRingtonesSet},
    {.words = u"calendar read",
     .help = u"show appointments and tasks, or save them in a file",
     .options = {organizerOption},
     .details = u"FILE ends in .vcs (as the phone has them) or .json.\n",
     .handset = &vcardHandset,
     .run = runCalendarRead},
    {.words = u"notes read",
     .help = u"show notes, or save them in a file",
     .options = {organizerOption},
     .details = u"FILE ends in .vnt (as the phone has them) or .json.\n",
     .handset = &vcardHandset,
     .run = runNotesRead},
    {.words = u"areacodes",
     .help = u"show the area codes by which the phone rewrites numbers",
     .handset = &rewritingHandset,
     .run = runAreaCodes},
    {.words = u"areacodes set",
     .help = u"set the area codes; four empty texts switch rewriting off",
     .arguments = {{u"A", u"prefix of international numbers, 00"},
                   {u"B", u"country code, 49"},
                   {u"C", u"prefix of national numbers, 0"},
                   {u"D", u"city code without that prefix, 30"}},
     .handset = &rewritingHandset,
     .run = runAreaCodesSet},
    {.words = u"files ls",
     .help = u"list a folder of the phone",
     .arguments = {{u"FOLDER", u"folder of the phone, its root if missing", {}, Count::OneOrNone}},
     .details = pathDetails,
     .handset = &filingHandset,
     .run = runFilesLs},
    {.words = u"files get",
     .help = u"save files of the phone here",
     .arguments = {{u"PATH", u"file of the phone", {}, Count::OneOrMore}},
     .options = {{u"--output", u"-o", u"DIR", u"folder to save them in, instead of the one you are in"}},
     .details = batchDetails,
     .handset = &filingHandset,
     .run = runFilesGet},
    {.words = u"files put",
     .help = u"send files to the phone",
     .arguments = {{u"FILE", u"local file", {}, Count::OneOrMore}},
     .options = {{u"--to", u"", u"FOLDER", u"folder of the phone, instead of its root"},
                 {u"--convert", u"", u"", u"bring pictures and sounds into the phone's form first"},
                 trimOption,
                 qualityOption},
     .details = batchDetails,
     .handset = &filingHandset,
     .run = runFilesPut},
    {.words = u"files rm",
     .help = u"delete files and empty folders of the phone",
     .arguments = {{u"PATH", u"file or folder of the phone", {}, Count::OneOrMore}},
     .options = {{u"--force", u"", u"", u"delete what is protected, too"}},
     .details = pathDetails,
     .handset = &filingHandset,
     .run = runFilesRm},
    {.words = u"files mkdir",
     .help = u"make a folder in the phone, and those above it",
     .arguments = {{u"FOLDER", u"folder of the phone"}},
     .details = pathDetails,
     .handset = &filingHandset,
     .run = runFilesMkdir},
    {.words = u"files mv",
     .help = u"move or rename a file or folder of the phone",
     .arguments = {{u"FROM", u"file or folder of the phone"},
                   {u"TO", u"its new path; with a slash at the end the folder that it goes to"}},
     .details = pathDetails,
     .handset = &filingHandset,
     .run = runFilesMv},
    {.words = u"files df",
     .help = u"show how much the phone's memory holds and has left",
     .handset = &filingHandset,
     .run = runFilesDf},
    {.words = u"files attr",
     .help = u"protect a file of the phone, or make it writable",
     .arguments = {{u"PATH", u"file or folder of the phone"},
                   {u"RIGHTS", u"ro for read-only, rw for all rights", {u"ro", u"rw"}}},
     .details = pathDetails,
     .handset = &filingHandset,
     .run = runFilesAttr},
    {.words = u"history",
     .help = u"list the changes that can be taken back",
     .details = u"Before Kalmo changes a phone it records what the phone holds. Needs no phone.\n",
     .run = runHistory},
    {.words = u"undo",
     .help = u"put back what the phone held before a change",
     .arguments =
         {{u"ID", u"a change that history lists, the latest of this phone if missing", {}, Count::OneOrNone}},
     .options = {dryRunOption},
     .details = u"Reads what the phone holds now, says what changes, and asks. An undo is a change like any\n"
                u"other: it is recorded, and can be undone.\n",
     .run = runUndo},
    {.words = u"preview",
     .help = u"show what an import of a file would bring",
     .arguments = {importArgument},
     .options =
         {{u"--for", u"", u"KIND", u"the phonebook that it is for: classic or vcard", {u"classic", u"vcard"}},
          {u"--against", u"", u"FILE", u"a saved list that stands in for the phone's"}},
     .group = &importOptionGroup(),
     .details = u"Needs no phone. Rows with an x would be imported.\n",
     .run = runPreview},
    {.words = u"media sound",
     .help = u"make a ringtone of a WAV or MP3 file",
     .arguments = {{u"IN", u"a .wav or .mp3 file"}, {u"OUT", u"file for the result, .L22 or .722"}},
     .options = {trimOption, forceOption},
     .details = mediaDetails,
     .run = runMediaSound},
    {.words = u"media melody",
     .help = u"make a ringtone of a MIDI file",
     .arguments = {{u"IN", u"a .mid file of at most 32000 bytes"}, {u"OUT", u"file for the result"}},
     .options = {forceOption},
     .details = mediaDetails,
     .run = runMediaMelody},
    {.words = u"media picture",
     .help = u"bring a picture into the size of a family of handsets",
     .arguments = {{u"IN", u"a picture"}, {u"OUT", u"file for the result, .jpg or .bmp"}},
     .options = {{u"--family",
                  u"",
                  u"N",
                  u"family of the handset, 5, 6 or 8 to 13",
                  {u"5", u"6", u"8", u"9", u"10", u"11", u"12", u"13"}},
                 {u"--clip", u"", u"", u"for the folder of clip pictures"},
                 qualityOption,
                 forceOption},
     .details = mediaDetails,
     .run = runMediaPicture},
    {.words = u"recover",
     .help = u"take a handset that was left in data mode back to commands",
     .details = u"For a handset that is not found since a transfer was broken off. Takes up to a minute.\n",
     .run = runRecover},
};

} // namespace

const std::vector<Command>& commandTable()
{
    return allCommands;
}

const std::vector<Option>& globalOptions()
{
    static const std::vector<Option> options = {
        {u"--port", u"", u"N|DEVICE", u"number of the port, or the device itself"},
        {u"--storage", u"", u"DIR", u"folder for settings and backups, made if missing"},
        {u"--log", u"", u"FILE", u"append every exchange with the phone to a file"},
        {u"--yes", u"-y", u"", u"answer every question with yes"},
        {u"--json", u"", u"", u"print the result as one JSON value"},
        {u"--quiet", u"-q", u"", u"print results and errors only"},
        {u"--help", u"-h", u"", u"show this help, or that of a command"},
        {u"--version", u"", u"", u"show the version"},
    };
    return options;
}

const std::vector<ExitMeaning>& exitMeanings()
{
    static const std::vector<ExitMeaning> meanings = {
        {ExitDone, u"done"},
        {ExitFailed, u"the phone or the line failed, or a file could not be written"},
        {ExitWrongUse, u"wrong use or a bad input file"},
        {ExitNoPhone, u"no phone found, or none that Kalmo knows"},
        {ExitRefused, u"refused by the user, or interrupted"},
    };
    return meanings;
}

} // namespace kalmo::cli
