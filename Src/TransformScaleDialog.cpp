#include "DLG/TransformScaleDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "DLG/ExclusiveRadios.h"

namespace DLG::TransformScale {

namespace {

using zelui::controls::UI_NumberEdit;
using zelui::controls::UI_RadioButton;

struct Scale {
    double uniform;
    double horizontal;
    double vertical;
    bool isUniform;
};

template <class Node>
void Enable(const boost::intrusive_ptr<Node>& ioNode, bool inEnabled)
{
    if (ioNode) {
        ioNode->SetEnabled(inEnabled);
    }
}

class TransformScaleDialog : public DialogBaseImpl {
public:
    TransformScaleDialog(const UIF::Workspace& inWorkspace, const Scale& inScale)
        : DialogBaseImpl(L"TransformScaleDialog", inWorkspace), mScale(inScale)
    {
    }

    const Scale& Result() const { return mScale; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        mUniformEdit = Bind<UI_NumberEdit>(L"uniformScaleNumberEdit", mScale.uniform);
        mHorizontalEdit = Bind<UI_NumberEdit>(L"horScaleNumberEdit", mScale.horizontal);
        mVerticalEdit = Bind<UI_NumberEdit>(L"verScaleNumberEdit", mScale.vertical);
        mUniformGroup = GetUINodePtr<zelui::ui::UI_Node>(L"uniformScaleGroupBox");
        mNonUniformGroup = GetUINodePtr<zelui::ui::UI_Node>(L"nonUniformScaleGroupBox");

        mModes.Add(GetUINodePtr<UI_RadioButton>(L"Uniform"), true);
        mModes.Add(GetUINodePtr<UI_RadioButton>(L"Non-Uniform"), false);
        mModes.OnChoose([this](bool inUniform) { UseMode(inUniform); });
        mModes.Check(mScale.isUniform);
        UseMode(mScale.isUniform);

        if (const auto& first = mScale.isUniform ? mUniformEdit : mHorizontalEdit) {
            first->SelectAll();
        }
    }

    // The edits of the kind not chosen keep their values but take no typing.
    void UseMode(bool inUniform)
    {
        mScale.isUniform = inUniform;
        Enable(mUniformGroup, inUniform);
        Enable(mUniformEdit, inUniform);
        Enable(mNonUniformGroup, !inUniform);
        Enable(mHorizontalEdit, !inUniform);
        Enable(mVerticalEdit, !inUniform);
    }

    Scale mScale;
    ExclusiveRadios<bool> mModes;
    boost::intrusive_ptr<UI_NumberEdit> mUniformEdit;
    boost::intrusive_ptr<UI_NumberEdit> mHorizontalEdit;
    boost::intrusive_ptr<UI_NumberEdit> mVerticalEdit;
    zelui::ui::UI_NodePtr mUniformGroup;
    zelui::ui::UI_NodePtr mNonUniformGroup;
};

} // namespace

bool DoTransformScaleDialog(double& ioUniform, double& ioHorizontal, double& ioVertical, bool& ioIsUniform)
{
    Scale scale{ioUniform, ioHorizontal, ioVertical, ioIsUniform};
    if (!RunScriptDialog<TransformScaleDialog>(L"TransformScaleDialog.vrel", scale)) {
        return false;
    }
    ioUniform = scale.uniform;
    ioHorizontal = scale.horizontal;
    ioVertical = scale.vertical;
    ioIsUniform = scale.isUniform;
    return true;
}

} // namespace DLG::TransformScale
