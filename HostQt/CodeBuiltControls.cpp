// Controls that a dialog builds in code rather than a layout script: buttons, check boxes, texts,
// radio groups and picture buttons, each a widget in its parent node's window.

#include <QButtonGroup>
#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>

#include <memory>

#include "HostQt/NodePeer.h"
#include "HostQt/Widgets.h"
#include "zelcore/Error.h"
#include "zelui/Controls.h"

namespace HostQt {

namespace {

QString ToQ(const std::wstring& inText) { return QString::fromStdWString(inText); }

// A flat push button that draws the image its supplier names, asked again at each paint, centred
// in the button and scaled down to fit it.
class PictureButtonWidget : public QPushButton {
public:
    explicit PictureButtonWidget(QWidget* inParent) : QPushButton(inParent) { setFlat(true); }

    void SetImageSupplier(zelui::controls::UI_PictureButton::ImageSupplier inSupplier)
    {
        mSupplier = std::move(inSupplier);
        update();
    }

protected:
    void paintEvent(QPaintEvent* inEvent) override
    {
        QPushButton::paintEvent(inEvent);
        std::wstring name;
        if (mSupplier) {
            Guarded([&] { name = mSupplier(); });
        }
        const QPixmap image = name.empty() ? QPixmap() : HostImage(name, *this);
        if (image.isNull()) {
            return;
        }
        QStyleOptionButton option;
        initStyleOption(&option);
        const QRect area = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
        const QSize natural = (QSizeF(image.size()) / image.devicePixelRatio()).toSize();
        const QSize shown =
            natural.boundedTo(area.size()) == natural ? natural : natural.scaled(area.size(), Qt::KeepAspectRatio);
        QRect target(QPoint(), shown);
        target.moveCenter(area.center());
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(target, image);
    }

private:
    zelui::controls::UI_PictureButton::ImageSupplier mSupplier;
};

QButtonGroup* ButtonGroup(const zelui::controls::UI_RadioGroup& inGroup)
{
    const auto* panel = PeerWidget<QWidget>(&inGroup);
    return panel ? panel->findChild<QButtonGroup*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

} // namespace

} // namespace HostQt

namespace zelui::controls {

using HostQt::CodeBuiltPeer;
using HostQt::PeerWidget;
using HostQt::ToQ;
using HostQt::WidgetOf;

UI_Button::UI_Button(const drawbot::SupplierInterface*, ui::UI_Node* inParent, const std::wstring& inLabel)
    : UI_Control(CodeBuiltPeer(new QPushButton(ToQ(inLabel), WidgetOf(inParent))))
{
    HostQt::BroadcastClicks(*this);
}

UI_CheckBox::UI_CheckBox(const drawbot::SupplierInterface*, ui::UI_Node* inParent, const std::wstring& inLabel)
    : UI_Button(CodeBuiltPeer(new QCheckBox(ToQ(inLabel), WidgetOf(inParent))))
{
    HostQt::BroadcastClicks(*this);
}

UI_StaticText::UI_StaticText(const drawbot::SupplierInterface*, ui::UI_Node* inParent, const std::wstring& inText)
    : UI_Control(CodeBuiltPeer(new QLabel(ToQ(inText), WidgetOf(inParent))))
{
}

// The panel draws nothing of its own. A click or arrow key that ends on another button than the
// one selected when it began is one change; a click on the selected button is none.
UI_RadioGroup::UI_RadioGroup(const drawbot::SupplierInterface*, ui::UI_Node* inParent)
    : UI_Control(CodeBuiltPeer(new QWidget(WidgetOf(inParent))))
{
    auto* group = new QButtonGroup(PeerWidget<QWidget>(this));
    group->setExclusive(true);
    auto selectedAtPress = std::make_shared<int>(-1);
    QObject* context = GetPeer()->ConnectionContext();
    QObject::connect(group, &QButtonGroup::idPressed, context,
                     [group, selectedAtPress] { *selectedAtPress = group->checkedId(); });
    QObject::connect(group, &QButtonGroup::idClicked, context, [this, group, selectedAtPress] {
        if (group->checkedId() != *selectedAtPress) {
            BroadcastChange();
        }
    });
}

UI_RadioGroup::~UI_RadioGroup() = default;

boost::intrusive_ptr<UI_RadioButton> UI_RadioGroup::AddRadioButton(const std::wstring& inID,
                                                                   const std::wstring& inLabel,
                                                                   const ui::Rect& inBounds)
{
    auto* button = new QRadioButton(ToQ(inLabel), PeerWidget<QWidget>(this));
    button->setObjectName(ToQ(inID));
    button->setGeometry(HostQt::ToQRect(inBounds));
    if (QButtonGroup* group = HostQt::ButtonGroup(*this)) {
        group->addButton(button, static_cast<int>(mButtons.size()));
    }
    boost::intrusive_ptr<UI_RadioButton> node(new UI_RadioButton(CodeBuiltPeer(button)));
    HostQt::BroadcastClicks(*node);
    mButtons.push_back(node);
    return node;
}

int UI_RadioGroup::GetButtonCount() const { return static_cast<int>(mButtons.size()); }

boost::intrusive_ptr<UI_RadioButton> UI_RadioGroup::GetButton(int inIndex) const
{
    ZEL_INPUT_CONTRACT(inIndex >= 0 && inIndex < GetButtonCount());
    return mButtons[static_cast<std::size_t>(inIndex)];
}

int UI_RadioGroup::GetSelectedIndex() const
{
    const QButtonGroup* group = HostQt::ButtonGroup(*this);
    return group ? group->checkedId() : -1;
}

// An exclusive group keeps one button checked: clearing the selection lifts the rule for a moment.
void UI_RadioGroup::SetSelectedIndex(int inIndex)
{
    ZEL_INPUT_CONTRACT(inIndex >= -1 && inIndex < GetButtonCount());
    QButtonGroup* group = HostQt::ButtonGroup(*this);
    if (!group) {
        return;
    }
    if (inIndex >= 0) {
        group->button(inIndex)->setChecked(true);
    } else if (QAbstractButton* checked = group->checkedButton()) {
        group->setExclusive(false);
        checked->setChecked(false);
        group->setExclusive(true);
    }
}

UI_PictureButton::UI_PictureButton(const drawbot::SupplierInterface*, ui::UI_Node* inParent)
    : UI_Button(CodeBuiltPeer(new HostQt::PictureButtonWidget(WidgetOf(inParent))))
{
    HostQt::BroadcastClicks(*this);
}

// The button may outlive its node in the window; its supplier may not.
UI_PictureButton::~UI_PictureButton()
{
    if (auto* button = dynamic_cast<HostQt::PictureButtonWidget*>(PeerWidget<QWidget>(this))) {
        button->SetImageSupplier({});
    }
}

void UI_PictureButton::SetImageSupplier(ImageSupplier inSupplier)
{
    if (auto* button = dynamic_cast<HostQt::PictureButtonWidget*>(PeerWidget<QWidget>(this))) {
        button->SetImageSupplier(std::move(inSupplier));
    }
}

void UI_PictureButton::SetToolTip(const std::wstring& inText)
{
    if (auto* button = PeerWidget<QWidget>(this)) {
        button->setToolTip(ToQ(inText));
        button->setAccessibleName(ToQ(inText));
    }
}

} // namespace zelui::controls
