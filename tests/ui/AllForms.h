#pragma once

#include "obex/FolderRows.h"
#include "phonedata/VcardStore.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/controls/ucCalendar.h"
#include "ui/forms/FormerStatesDialog.h"
#include "ui/forms/frmEinstellungen.h"
#include "ui/forms/frmExport.h"
#include "ui/forms/frmFun.h"
#include "ui/forms/frmMmc_View.h"
#include "ui/forms/frmMmcOpenControls.h"
#include "ui/forms/frmNEentry.h"
#include "ui/forms/frmStart.h"
#include "ui/forms/frmTBentry.h"
#include "ui/forms/frmVCFneu.h"
#include "ui/forms/frmVorwahl.h"
#include "ui/forms/frmWelcome.h"
#include "ui/forms/UploadDialog.h"
#include "ui/help/HelpWindow.h"
#include "ui/import/frmImportPb.h"
#include "ui/panels/fraFFS.h"
#include "ui/TestProgram.h"
#include "ui/window/AboutBox.h"
#include "ui/window/frmPB.h"

namespace kalmo::tests {

using namespace Qt::StringLiterals;

/// A program with one of its forms, and what keeps it alive.
struct Shown
{
    explicit Shown(const QString& model) : made(model)
    {
        made.test.clock.runToolkitEvents(true);
        mmc = std::make_shared<obex::clsMmc>(made.line);
    }

    TestProgram made;
    std::shared_ptr<obex::clsMmc> mmc;
    std::unique_ptr<toolkit::ListRows> rows;
    std::unique_ptr<QWidget> form;
};

using Maker = void (*)(Shown& shown);

template <typename Form>
void makeClassicForm(Shown& shown)
{
    shown.rows =
        std::is_same_v<Form, ui::frmTBentry> ? phonedata::makePhonebookRows() : phonedata::makeProviderRows();
    shown.form = std::make_unique<Form>(shown.made.program, *shown.rows);
    for (auto* box : shown.form->template findChildren<QCheckBox*>())
        box->setChecked(true);
}

inline void makeContactForm(Shown& shown)
{
    shown.rows = phonedata::makeVcfRows();
    auto store = std::make_shared<phonedata::VcardStore>(shown.mmc, *shown.rows);
    shown.form = std::make_unique<ui::frmVCFneu>(shown.made.program, std::move(store));
    child<QCheckBox>(*shown.form, "chkGebu").setChecked(true);
}

template <int destination>
void makeExport(Shown& shown)
{
    auto form = std::make_unique<ui::frmExport>(shown.made.program);
    shown.rows = phonedata::makeVcfRows();
    form->formPresent(*shown.rows, u"Telefonbuch"_s);
    child<QRadioButton>(*form, qPrintable(u"optDest%1"_s.arg(destination))).setChecked(true);
    shown.form = std::move(form);
}

inline void makeAreaCodes(Shown& shown)
{
    auto form = std::make_unique<ui::frmVorwahl>(shown.made.program);
    form->Form_Present(u"\"00\",\"49\",\"0\",\"30\""_s);
    shown.form = std::move(form);
}

inline void makeFormerStates(Shown& shown)
{
    operations::Records records(shown.made.test.context, operations::identifyPhone(shown.made.line));
    for (const auto list : {operations::RecordedList::Phonebook, operations::RecordedList::Files})
        records.begin(list, operations::RecordCause::Undo, 250, {});
    shown.form = std::make_unique<ui::FormerStatesDialog>(
        shown.made.program, operations::UndoJob{shown.made.line, shown.made.memory, shown.mmc},
        operations::RecordedList::Phonebook);
}

template <typename Form>
void makeForm(Shown& shown)
{
    shown.form = std::make_unique<Form>(shown.made.program);
}

template <ui::ImportFrom source>
void makeImport(Shown& shown)
{
    ui::ImportLists lists;
    shown.rows = phonedata::makeVcfRows();
    if (shown.made.test.sy.PhoneType < 5)
        lists = {.lvwTB = shown.rows.get(), .lvwNE = shown.rows.get()};
    else
        lists.store = std::make_shared<phonedata::VcardStore>(shown.mmc, *shown.rows);
    auto form = std::make_unique<ui::frmImportPb>(shown.made.program, lists, source);
    if (source == ui::ImportFrom::AddressBook)
        form->setGiven(
            shown.made.test.makeFile(u"a.vcf"_s, "BEGIN:VCARD\nTEL:+49 (0) 30\nORG:Firma\nEND:VCARD\n"));
    shown.form = std::move(form);
}

template <media::UploadKind kind>
void makeUploadPanel(Shown& shown)
{
    shown.form = std::make_unique<ui::frmMmcOpenControls>(
        shown.made.program, ui::UploadQuestion{.kind = kind, .phoneType = shown.made.test.sy.PhoneType});
}

/// The preview of a file by its ending; a picture is one of the program's own.
inline void makePreview(Shown& shown, const QString& name)
{
    const QString path = shown.made.test.makeFile(name, "text");
    if (name.endsWith(u"png"_s))
        QImage(200, 100, QImage::Format_RGB32).save(path);
    auto form = std::make_unique<ui::frmMmc_View>(shown.made.program);
    if (ui::frmMmc_View::IsSupported(name))
        form->Form_Present(path, name);
    else
        form->presentUnknown(path, name);
    shown.form = std::move(form);
}

inline void makeHelp(Shown& shown)
{
    auto form = std::make_unique<ui::HelpWindow>();
    form->showTopic(ui::helpTopicStart);
    shown.form = std::move(form);
}

template <typename Form>
void makePlain(Shown& shown)
{
    shown.form = std::make_unique<Form>();
}

inline void makeCalendar(Shown& shown)
{
    shown.form = std::make_unique<ui::ucCalendar>(shown.made.context);
}

inline void makeWindow(Shown& shown)
{
    shown.form = std::make_unique<ui::frmPB>(shown.made.program, shown.mmc);
}

template <Buttons buttons>
void showBox(Shown&)
{
    ui::QtDialogs().Show(
        {.text = u"1 Einträge wirklich löschen?"_s, .buttons = buttons, .icon = Icon::Question});
}

inline void openAboutBox(Shown& shown)
{
    ui::showAbout(*shown.form);
}

/// As long as the longest texts of the program.
inline void showLongMessage(Shown&)
{
    const QString part = u"Der virtuelle Anschluss verhält sich wie ein gewöhnlicher Anschluss des PCs. "_s;
    ui::QtDialogs().Show({.text = (part.repeated(3) + u"\n\n"_s).repeated(6), .icon = Icon::Information});
}

inline void chooseFile(Shown& shown)
{
    ui::chooseUpload(shown.made.program,
                     {.kind = media::UploadKind::Pictures, .phoneType = shown.made.test.sy.PhoneType},
                     shown.form.get());
}

inline void dropPicture(Shown& shown)
{
    const QString path = shown.made.test.path(u"a.png"_s);
    QImage(200, 100, QImage::Format_RGB32).save(path);
    ui::chooseUpload(
        shown.made.program,
        {.kind = media::UploadKind::Pictures, .phoneType = shown.made.test.sy.PhoneType, .given = {path}},
        shown.form.get());
}

inline void makeFolder(Shown& shown)
{
    child<QAction>(*shown.form, "ffsNewFolder").trigger();
}

inline void renameFolder(Shown& shown)
{
    toolkit::ListRows& rows = shown.form->findChild<ui::fraFFS*>()->lvwFFs();
    for (int row = 0; row < rows.count(); ++row) {
        if (rows.row(row).key.startsWith(obex::folderKeyPrefix))
            rows.setCurrent(row);
    }
    child<QAction>(*shown.form, "ffsRename").trigger();
}

/// Closes the window in the middle of a reading.
inline void closeWhileBusy(Shown& shown)
{
    shown.made.test.clock.after(1.5, [&shown] { shown.form->close(); });
    static_cast<ui::frmPB&>(*shown.form).goTo(u"TB"_s);
}

/// A form of the window, and how it comes on the screen.
struct FormRow
{
    const char* name;
    QString model;
    Maker make;
    QString section = {}; ///< of the main window
    Maker open = nullptr; ///< opens a modal dialog over the form, which is looked at in place of it
    bool isBusy = false;  ///< looked at in the middle of what the section reads
};

inline const FormRow allForms[] = {
    {"classic entry", u"PICASSO"_s, makeClassicForm<ui::frmTBentry>},
    {"provider", u"PICASSO"_s, makeClassicForm<ui::frmNEentry>},
    {"contact", u"SL450HX"_s, makeContactForm},
    {"export to CSV", u"SL450HX"_s, makeExport<2>},
    {"export to HTML", u"SL450HX"_s, makeExport<3>},
    {"export to Word", u"SL450HX"_s, makeExport<1>},
    {"area codes", u"SL450HX"_s, makeAreaCodes},
    {"former states", u"SL450HX"_s, makeFormerStates},
    {"settings", u"SL450HX"_s, makeForm<ui::frmEinstellungen>},
    {"import of a file", u"PICASSO"_s, makeImport<ui::ImportFrom::File>},
    {"import of a file to contacts", u"SL450HX"_s, makeImport<ui::ImportFrom::File>},
    {"import of an address book", u"PICASSO"_s, makeImport<ui::ImportFrom::AddressBook>},
    {"import of an address book to contacts", u"SL450HX"_s, makeImport<ui::ImportFrom::AddressBook>},
    {"upload of pictures", u"SL450HX"_s, makeUploadPanel<media::UploadKind::Pictures>},
    {"upload of sounds", u"SL450HX"_s, makeUploadPanel<media::UploadKind::Sounds>},
    {"upload of melodies", u"S68H"_s, makeUploadPanel<media::UploadKind::Melodies>},
    {"preview of a picture", u"SL450HX"_s, [](Shown& shown) { makePreview(shown, u"a.png"_s); }},
    {"preview of a sound", u"SL450HX"_s, [](Shown& shown) { makePreview(shown, u"a.mid"_s); }},
    {"preview of a text", u"SL450HX"_s, [](Shown& shown) { makePreview(shown, u"a.txt"_s); }},
    {"preview of a ringtone", u"SL450HX"_s, [](Shown& shown) { makePreview(shown, u"a.L22"_s); }},
    {"help", u"SL450HX"_s, makeHelp},
    {"welcome", u"SL450HX"_s, makeForm<ui::frmWelcome>},
    {"splash", u"SL450HX"_s, makePlain<ui::frmStart>},
    {"picture", u"SL450HX"_s, makePlain<ui::frmFun>},
    {"calendar", u"SL450HX"_s, makeCalendar},
    {"sponsors", u"PICASSO"_s, makeWindow, u"SPONSOR"_s},
    {"classic phonebook", u"PICASSO"_s, makeWindow, u"TB"_s},
    {"providers", u"PICASSO"_s, makeWindow, u"NE"_s},
    {"ringtones", u"PICASSO"_s, makeWindow, u"SOUND"_s},
    {"device data", u"PICASSO"_s, makeWindow, u"DIV"_s},
    {"contacts", u"SL450HX"_s, makeWindow, u"TB"_s},
    {"sponsors beside contacts", u"SL450HX"_s, makeWindow, u"SPONSOR"_s},
    {"device data beside contacts", u"SL450HX"_s, makeWindow, u"DIV"_s},
    {"files", u"SL450HX"_s, makeWindow, u"FFS"_s},
    {"contacts, being read", u"SL450HX"_s, makeWindow, u"TB"_s, nullptr, true},
    {"classic phonebook, being read", u"PICASSO"_s, makeWindow, u"TB"_s, nullptr, true},
    {"question", u"SL450HX"_s, makePlain<QWidget>, {}, showBox<Buttons::YesNoCancel>},
    {"message", u"SL450HX"_s, makePlain<QWidget>, {}, showBox<Buttons::Ok>},
    {"long message", u"SL450HX"_s, makePlain<QWidget>, {}, showLongMessage},
    {"file to send", u"SL450HX"_s, makeWindow, u"SPONSOR"_s, chooseFile},
    {"about", u"SL450HX"_s, makeWindow, u"SPONSOR"_s, openAboutBox},
    {"dropped files", u"SL450HX"_s, makeWindow, u"SPONSOR"_s, dropPicture},
    {"new folder", u"SL450HX"_s, makeWindow, u"FFS"_s, makeFolder},
    {"rename", u"SL450HX"_s, makeWindow, u"FFS"_s, renameFolder},
    {"closing question", u"WOODSTOCK"_s, makeWindow, u"SPONSOR"_s, closeWhileBusy},
};

} // namespace kalmo::tests
