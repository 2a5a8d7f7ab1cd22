#include "library/ui/library_sheets.h"

#include "library/model/library_model.h"
#include "library/ui/clean_up_sheet.h"
#include "library/ui/combine_sheet.h"
#include "library/ui/export_sheet.h"
#include "library/ui/guide_sheet.h"
#include "library/ui/pdf_sheet.h"
#include "library/ui/rename_sheet.h"

namespace {

Sheet *make(const LibraryPorts &ports, LibraryActions &actions, QWidget *window, const LibrarySheet &sheet)
{
    switch (sheet.kind) {
    case LibrarySheet::Kind::Export:
        return new ExportSheet(ports, window, sheet.paths);
    case LibrarySheet::Kind::Pdf:
        return new PdfSheet(ports, window, sheet.paths);
    case LibrarySheet::Kind::Combine:
        return new CombineSheet(ports, window, sheet.paths);
    case LibrarySheet::Kind::Rename:
        return new RenameSheet(ports, window, sheet.paths);
    case LibrarySheet::Kind::Guide:
        return new GuideSheet(ports, window, sheet.paths);
    case LibrarySheet::Kind::CleanUp:
        return new CleanUpSheet(ports, actions, window);
    case LibrarySheet::Kind::NewCollection:
        actions.newCollection(sheet.paths);
        return nullptr; // asks by itself
    case LibrarySheet::Kind::RenameCollection:
        actions.renameCollection(sheet.collection.id);
        return nullptr;
    }
    Q_UNREACHABLE();
}

} // namespace

void LibrarySheets::open(const LibraryPorts &ports, LibraryActions &actions, QWidget *window,
                         const LibrarySheet &sheet)
{
    LibraryModel *model = &ports.model;
    Sheet *made = make(ports, actions, window, sheet);
    if (!made)
        return model->setSheet(std::nullopt);
    QObject::connect(made, &Sheet::closed, model, [model] { model->setSheet(std::nullopt); });
    made->open();
}
