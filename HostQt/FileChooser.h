#pragma once

#include <QFileDialog>
#include <QSortFilterProxyModel>

#include <memory>

#include "UIF/FileChooser.h"

namespace HostQt {

class Workspace;

// The reference host's file chooser: Qt's own file dialog (never the platform's native one, so
// that the panel and the list filter work everywhere), centred over the main window.
std::unique_ptr<UIF::FileChooserService> MakeFileChooserService(Workspace& inWorkspace);

// The list filter between a chooser's file system model and its views: asks the customiser
// about each item. Sorting goes on in the file system model, so the filter keeps its order.
class ChooserListFilter : public QSortFilterProxyModel {
public:
    explicit ChooserListFilter(const UIF::FileChooserCustomizer& inCustomizer, QObject* inParent = nullptr);
    void Refilter() { invalidateFilter(); }
    void sort(int inColumn, Qt::SortOrder inOrder) override;

protected:
    bool filterAcceptsRow(int inRow, const QModelIndex& inParent) const override;

private:
    const UIF::FileChooserCustomizer& mCustomizer;
};

// Sets a Qt file dialog up as the host's chooser lists files: types named by extension and, with
// a customiser, its list filter (returned; null without one).
ChooserListFilter* PrepareChooserList(QFileDialog& ioDialog, const UIF::FileChooserCustomizer* inCustomizer);

// Registers the host's importer registry class; Unregister puts back what it replaced.
void RegisterImporterRegistry();
void UnregisterImporterRegistry();

} // namespace HostQt
