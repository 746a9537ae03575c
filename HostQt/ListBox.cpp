// The host's list box on a QTreeWidget: rows of column texts, optionally checkable.

#include <QSignalBlocker>
#include <QTreeWidget>

#include "HostQt/NodePeer.h"
#include "zelui/Controls.h"

namespace HostQt {

zelui::ui::UI_NodePtr MakeListBoxNode(QTreeWidget* inList, std::unique_ptr<zelui::ui::NodePeer> inPeer)
{
    QObject* context = inPeer->ConnectionContext();
    boost::intrusive_ptr<zelui::controls::UI_ListBox> node(new zelui::controls::UI_ListBox(std::move(inPeer)));
    // The calls of UI_ListBox block the widget's signals: what arrives here is the user's doing.
    QObject::connect(inList, &QTreeWidget::itemChanged, context, [raw = node.get()] { raw->BroadcastChange(); });
    QObject::connect(inList, &QTreeWidget::itemSelectionChanged, context,
                     [raw = node.get()] { raw->BroadcastChange(); });
    return node;
}

} // namespace HostQt

namespace zelui::controls {

using HostQt::PeerWidget;

namespace {

QTreeWidgetItem* Row(const UI_ListBox& inList, int inRow)
{
    const auto* tree = PeerWidget<QTreeWidget>(&inList);
    return tree && inRow >= 0 && inRow < tree->topLevelItemCount() ? tree->topLevelItem(inRow) : nullptr;
}

} // namespace

UI_ListBox::~UI_ListBox() = default;

void UI_ListBox::Clear()
{
    if (auto* tree = PeerWidget<QTreeWidget>(this)) {
        const QSignalBlocker blocker(tree);
        tree->clear();
    }
}

int UI_ListBox::AddRow(const std::vector<std::wstring>& inCells)
{
    auto* tree = PeerWidget<QTreeWidget>(this);
    if (!tree) {
        return -1;
    }
    const QSignalBlocker blocker(tree);
    auto* item = new QTreeWidgetItem(tree);
    for (std::size_t column = 0; column < inCells.size(); ++column) {
        item->setText(static_cast<int>(column), QString::fromStdWString(inCells[column]));
    }
    if (mCheckable) {
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Unchecked);
    }
    return tree->indexOfTopLevelItem(item);
}

int UI_ListBox::GetRowCount() const
{
    const auto* tree = PeerWidget<QTreeWidget>(this);
    return tree ? tree->topLevelItemCount() : 0;
}

std::wstring UI_ListBox::GetCellText(int inRow, int inColumn) const
{
    const QTreeWidgetItem* item = Row(*this, inRow);
    return item ? item->text(inColumn).toStdWString() : std::wstring();
}

void UI_ListBox::SetRowsCheckable(bool inCheckable) { mCheckable = inCheckable; }

void UI_ListBox::SetRowChecked(int inRow, bool inChecked)
{
    if (QTreeWidgetItem* item = Row(*this, inRow)) {
        const QSignalBlocker blocker(item->treeWidget());
        item->setCheckState(0, inChecked ? Qt::Checked : Qt::Unchecked);
    }
}

bool UI_ListBox::IsRowChecked(int inRow) const
{
    const QTreeWidgetItem* item = Row(*this, inRow);
    return item && item->checkState(0) == Qt::Checked;
}

void UI_ListBox::SelectRow(int inRow)
{
    auto* tree = PeerWidget<QTreeWidget>(this);
    if (!tree) {
        return;
    }
    const QSignalBlocker blocker(tree);
    tree->clearSelection();
    if (QTreeWidgetItem* item = Row(*this, inRow)) {
        tree->setCurrentItem(item);
        item->setSelected(true);
    }
}

int UI_ListBox::GetSelectedRow() const
{
    const auto* tree = PeerWidget<QTreeWidget>(this);
    if (!tree) {
        return -1;
    }
    const QList<QTreeWidgetItem*> selected = tree->selectedItems();
    return selected.isEmpty() ? -1 : tree->indexOfTopLevelItem(selected.front());
}

void UI_ListBox::SetColumnTitles(const std::vector<std::wstring>& inTitles)
{
    auto* tree = PeerWidget<QTreeWidget>(this);
    if (!tree) {
        return;
    }
    QTreeWidgetItem* header = tree->headerItem();
    for (std::size_t column = 0; column < inTitles.size(); ++column) {
        if (!inTitles[column].empty()) {
            header->setText(static_cast<int>(column), QString::fromStdWString(inTitles[column]));
        }
    }
}

} // namespace zelui::controls
