#include "ui/window/VZarbesoWindow.h"

#include "foundation/Messages.h"
#include "host/Alerts.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "resources/Menus.h"
#include "resources/Strings.h"
#include "scene/SceneAlerts.h"
#include "scene/VNurbsCurShapeManipulators.h"
#include "ui/controls/DialogControls.h"
#include "ui/dialogs/AboutBox.h"
#include "ui/dialogs/HelpWindow.h"
#include "ui/dialogs/NumericControls.h"
#include "ui/dialogs/OptionsDialog.h"
#include "ui/dialogs/PolygonOptionsDialog.h"
#include "ui/dialogs/RenderProgressDialog.h"
#include "ui/pages/ColorPicker.h"
#include "ui/pages/PathPage.h"
#include "ui/pages/ScenePage.h"
#include "ui/pages/SurfacePage.h"
#include "ui/pages/TextPage.h"
#include "ui/window/MainDialog.h"
#include "ui/window/ToolTable.h"
#include "ui/window/ViewRow.h"
#include "ui/window/ViewWidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>

namespace {
// The colour picker for the scene (the colour of a light), over the window.
bool PickSceneColor(const char* prompt, std::uint16_t rgb[3]) {
    std::array<std::uint16_t, 3> color{rgb[0], rgb[1], rgb[2]};
    if (!PickColor(QApplication::activeWindow(), color, prompt)) return false;
    for (int i = 0; i < 3; ++i)
        rgb[i] = color[i];
    return true;
}

// The texts of the six buttons of the window.
constexpr std::pair<int, int> kButtonTexts[] = {
    {1023, plumet::kStrControlsButton}, {1022, plumet::kStrOptionsButton},
    {1024, plumet::kStrHelpButton},     {1021, plumet::kStrPreviewButton},
    {1018, plumet::kStrCancelButton},   {1017, plumet::kStrOkButton},
};

// Restores the cursor at the end of a long piece of work.
struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

// Reports double clicks on the tool buttons and clicks on the logo, which
// have no signals of their own for them.
class ClickFilter : public QObject {
  public:
    explicit ClickFilter(VZarbesoWindow_Win& window) : w_(window) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonDblClick)
            w_.ToolDoubleClicked(watched->objectName().toInt());
        else if (event->type() == QEvent::MouseButtonRelease && watched->objectName() == "1020")
            w_.Command(1020);
        return QObject::eventFilter(watched, event);
    }

  private:
    VZarbesoWindow_Win& w_;
};
} // namespace

WFilterWindow* VZarbesoWindow_Win::Make(intptr_t parentWindow, int16 invocation) {
    return new VZarbesoWindow_Win(parentWindow, invocation);
}

VZarbesoWindow_Win::VZarbesoWindow_Win(intptr_t parentWindow, int16 invocation)
    : VZarbesoDocument(true), parentWindow_(parentWindow) {
    SetScenePickColor(&PickSceneColor);
    Start(invocation);
}

VZarbesoWindow_Win::~VZarbesoWindow_Win() {
    ended_ = true;
    SetScenePickColor(nullptr);
    gMouseCaptured = false;
    delete helpWindow_.data();
    // Numeric Controls goes with the main window.
    delete numericControls_.data();
    gNumericControls = nullptr;
    // The bindings go before the controls, so that no control that is being
    // destroyed reaches the view.
    viewRow_.reset();
    textPage_.reset();
    pathPage_.reset();
    surfacePage_.reset();
    scenePage_.reset();
    dialog_.reset();
}

QWidget* VZarbesoWindow_Win::Widget() {
    return dialog_.get();
}

QWidget* VZarbesoWindow_Win::Window() const {
    return dialog_.get();
}

NumericControls* VZarbesoWindow_Win::GetNumericControls() const {
    return numericControls_.data();
}

// ---- start-up -----------------------------------------------------------------

void VZarbesoWindow_Win::Start(int16 invocation) {
    std::unique_ptr<AboutBox> splash(invocation == 1 ? OpenSplash() : nullptr);
    suspendRedraw = true;
    dialog_ = std::make_unique<MainDialog>([this](int id) { Command(id); });
    controls_ = std::make_unique<DialogControls>(*plumet::FindDialogTemplate(plumet::kDialogMain),
                                                 dialog_.get());
    dialog_->setWindowTitle(QString::fromStdString(plumet::LoadString(plumet::kStrWindowTitle)));
    for (auto [id, text] : kButtonTexts)
        controls_->Button(id)->setText(QString::fromStdString(plumet::LoadString(text)));
    viewWidget_ = new ViewWidget(*this, dialog_.get());

    textPage_ = std::make_unique<TextPage>(*this);
    pathPage_ = std::make_unique<PathPage>(*this);
    surfacePage_ = std::make_unique<SurfacePage>(*this);
    scenePage_ = std::make_unique<ScenePage>(*this);
    viewRow_ = std::make_unique<ViewRow>(*this);
    for (WindowPage* page : std::initializer_list<WindowPage*>{
             textPage_.get(), pathPage_.get(), surfacePage_.get(), scenePage_.get()})
        page->Init();
    viewRow_->Init();
    InitControls();

    QTabWidget* tabs = controls_->Tabs(1000);
    for (const std::string& item : plumet::MenuRows(plumet::kMenuTabs))
        tabs->addTab(new QWidget, QString::fromStdString(item));
    QObject::connect(tabs, &QTabWidget::currentChanged, dialog_.get(), [this] { SwitchPage(); });

    auto* clicks = new ClickFilter(*this);
    clicks->setParent(dialog_.get());
    std::size_t toolCount = 0;
    const ToolEntry* tools = ToolTable(&toolCount);
    for (std::size_t i = 0; i < toolCount; ++i) {
        const int id = tools[i].buttonId;
        QAbstractButton* button = controls_->Button(id);
        // A checked button is unchecked only by choosing another tool.
        QObject::connect(button, &QAbstractButton::clicked, dialog_.get(),
                         [this, id] { Command(id); });
        button->installEventFilter(clicks);
    }
    for (int id : {1017, 1018, 1021, 1022, 1023, 1024, 1062})
        QObject::connect(controls_->Button(id), &QAbstractButton::clicked, dialog_.get(),
                         [this, id] { Command(id); });
    controls_->Get(1020)->installEventFilter(clicks);
    controls_->Get(1020)->setCursor(Qt::PointingHandCursor);

    // The session the preferences file kept, in the scene and the controls.
    ApplyWorkspace();

    // The view in its frame.
    const QRect place = controls_->Get(1011)->geometry();
    frameWidth = place.width() - 4;
    frameHeight = place.height() - 4;
    BindImage(false);
    FitWindowToImage();
    SelectToolButton(1001);
    ApplySwitches();

    if (invocation != 0) {
        PlaceWindow();
        MakeToolTips();
    }
    // Typing starts in the text field.
    controls_->Get(1041)->setFocus();
    suspendRedraw = false;
    SetTool(currentTool);
    Redraw();
    // The splash ends once the window stands: on the loop's first turn,
    // which comes after the window was shown.
    if (AboutBox* s = splash.release()) QTimer::singleShot(0, s, [s] { delete s; });
}

void VZarbesoWindow_Win::MakeToolTips() {
    // The tips show whether or not the window is the active one.
    dialog_->setAttribute(Qt::WA_AlwaysShowToolTips);
    std::size_t count = 0;
    const ToolEntry* tools = ToolTable(&count);
    for (std::size_t i = 0; i < count; ++i) {
        QAbstractButton* button = controls_->Button(tools[i].buttonId);
        button->setAccessibleName(QString::fromStdString(plumet::LoadString(tools[i].nameId)));
    }
    SetTooltipsActive(showTooltips);
}

void VZarbesoWindow_Win::SetTooltipsActive(bool active) {
    std::size_t count = 0;
    const ToolEntry* tools = ToolTable(&count);
    for (std::size_t i = 0; i < count; ++i) {
        QAbstractButton* button = controls_->Button(tools[i].buttonId);
        const int tip = active ? tools[i].tipId : 0;
        button->setToolTip(tip ? QString::fromStdString(plumet::LoadString(tip)) : QString());
    }
}

// ---- drawing -------------------------------------------------------------------

void VZarbesoWindow_Win::Redraw() {
    if (suspendRedraw || ended_) return;
    GetView()->Refresh();
    if (viewWidget_) viewWidget_->repaint();
}

// ---- switches and pages --------------------------------------------------------

VSwitch VZarbesoWindow_Win::SwitchOf(int id) {
    switch (id) {
    case 1027:
        return VSwitch::kPath;
    case 1028:
        return VSwitch::kImage;
    case 1029:
        return VSwitch::kLights;
    case 1030:
        return VSwitch::kText;
    default:
        return VSwitch::kGrid;
    }
}

void VZarbesoWindow_Win::ApplySwitches() {
    viewRow_->Fill();
    SwitchPage();
}

void VZarbesoWindow_Win::UpdateControls() {
    if (!controls_ || ended_) return;
    for (WindowPage* page : std::initializer_list<WindowPage*>{
             textPage_.get(), pathPage_.get(), surfacePage_.get(), scenePage_.get()})
        page->Fill();
    viewRow_->Fill();
}

void VZarbesoWindow_Win::ReportTextureFailure(const std::string& path) {
    ShowAlertText(plumet::kStrTextureLoadFailed,
                  plumet::LoadString(plumet::kStrTextureLoadFailed) + path +
                      plumet::LoadString(plumet::kStrTextureLoadFailedEnd),
                  Window());
}

void VZarbesoWindow_Win::SwitchPage() {
    QTabWidget* tabs = controls_->Tabs(1000);
    int page = tabs->currentIndex();
    if (page != 1 && !HasPath()) {
        const QSignalBlocker block(tabs);
        tabs->setCurrentIndex(1);
        page = 1;
    }
    controls_->ShowRange(1040, 1043, page == 0);
    if (page == 1) {
        controls_->ShowRange(1050, 1051, true);
        pathPage_->ShowPathControls();
    } else {
        controls_->ShowRange(1050, 1070, false);
    }
    controls_->ShowRange(1081, 1090, page == 2);
    controls_->ShowRange(1091, 1098, page == 3);
    if (page != 1) {
        SelectToolButton(1001);
        SetTool(12);
    }
}

// ---- tools ---------------------------------------------------------------------

void VZarbesoWindow_Win::SelectToolButton(int id) {
    for (int b = kFirstToolButton; b <= kLastToolButton; ++b)
        controls_->SetChecked(b, b == id);
    for (int b = kFirstPathToolButton; b <= kLastPathToolButton; ++b)
        controls_->SetChecked(b, b == id);
}

bool VZarbesoWindow_Win::HasPath() {
    if (GetView()->GetCurve()) return true;
    ShowAlert(plumet::kStrNeedPath, Window());
    return false;
}

void VZarbesoWindow_Win::SetTool(int number) {
    currentTool = number;
    ClearRender(false);
    VZarbesoView& view = *GetView();
    if (number >= 8 && number <= 11 && !HasPath()) {
        if (controls_->Get(1067)->isVisible()) {
            SelectToolButton(1067);
            SetTool(15);
        }
        return;
    }
    if (number >= 13 && number <= 20) {
        controls_->SetChecked(1027, true);
        SetSwitch(VSwitch::kPath, true);
    }
    // A new tool starts with nothing selected; the point tools show the
    // path's anchors, the others hide them.
    if (number == 13 || number == 14 || number == 19 || number == 20)
        view.BeginCurveEdit();
    else
        view.EndCurveEdit();
    view.SetTool(number);
    Redraw();
}

void VZarbesoWindow_Win::ToolDoubleClicked(int id) {
    if (id >= 1003 && id <= 1010) {
        numericControls_ = OpenNumericControls(*this, numericControls_.data());
        numericControls_->SelectPage(id <= 1006 ? NumericControls::kTextPage
                                                : NumericControls::kCameraPage);
    } else if (id == 1069 || id == 1070) {
        int count = GetShapeCount(GetView()->GetTool());
        bool polygon = polygonNotStar;
        if (!AskPolygonOptions(Window(), polygon, count)) return;
        if (polygon != polygonNotStar) {
            polygonNotStar = polygon;
            SelectToolButton(polygon ? 1069 : 1070);
            SetTool(polygon ? 17 : 18);
            drawingPath = true;
            pathPage_->ShowPathControls();
        }
        if (polygonNotStar)
            SetPolygonSides(count);
        else
            SetStarPoints(count);
    }
}

// ---- commands ------------------------------------------------------------------

void VZarbesoWindow_Win::Command(int id) {
    if (ended_) return;
    if (const ToolEntry* tool = ToolOfButton(id)) {
        SelectToolButton(id);
        SetTool(tool->tool);
        return;
    }
    switch (id) {
    case 1:
    case 1017:
        OkFlow();
        break;
    case 2:
        if (AskYesNo(plumet::kStrQuitQuestion, Window()) == kAnswerYes) EndRun(kQuitCancel);
        break;
    case 1018:
        EndRun(kQuitCancel);
        break;
    case 1020:
        RunAboutBox(Window());
        break;
    case 1021:
        PreviewFlow();
        break;
    case 1022:
        OptionsFlow();
        break;
    case 1023:
        numericControls_ = OpenNumericControls(*this, numericControls_.data());
        break;
    case 1024:
        OpenHelp();
        break;
    default:
        break;
    }
}

void VZarbesoWindow_Win::OptionsFlow() {
    int size = static_cast<int>(lightIconSize);
    bool tips = showTooltips != 0;
    AskOptions(Window(), tips, size, [this] { ResetAll(); });
    SetTooltipsActive(tips);
    SetLightIconSize(static_cast<float>(size));
    showTooltips = tips;
    ClearRender(false);
    Redraw();
}

void VZarbesoWindow_Win::OpenHelp() {
    helpWindow_ = ::OpenHelp(helpWindow_.data());
}

void VZarbesoWindow_Win::OkFlow() {
    // The window's own focus, not the application's: a click on OK in a
    // window that is not (or no longer) the active one is still OK.
    QWidget* focus = Window()->focusWidget();
    const std::string text = controls_->Edit(1041)->text().toLatin1().toStdString();
    if (focus == controls_->Get(1017)) {
        if (!text.empty()) {
            if (HasPath()) {
                WaitCursor wait;
                RenderProgressDialog progress(Window(), viewWidget_);
                progress_ = &progress;
                ConfirmRun();
                progress_ = nullptr;
                // a render the user stopped leaves the window open
                if (!RenderStopped()) EndRun(kQuitOK);
            }
            return;
        }
        SetText(text);
        ShowAlert(plumet::kStrNothingToRender, Window());
    }
    if (focus == controls_->Get(1041)) {
        // Enter in the text field commits the text and keeps the window.
        if (text != controls.text) SetText(text);
        Redraw();
        return;
    }
    ClearRender(false);
    Redraw();
}

bool VZarbesoWindow_Win::RenderProgress(double done) {
    const bool go = VZarbesoDocument::RenderProgress(done);
    return (!progress_ || progress_->Tell(done)) && go;
}

void VZarbesoWindow_Win::EndRun(int code) {
    if (gPluginParameters) gPluginParameters->invocation = 0;
    ended_ = true;
    delete helpWindow_.data();
    delete numericControls_.data();
    PostQuit(code);
}

void VZarbesoWindow_Win::PreviewFlow() {
    if (!HasPath()) return;
    WaitCursor wait;
    if (!GetView()->IsRenderShowing()) {
        RenderProgressDialog progress(Window(), viewWidget_);
        progress_ = &progress;
        PreviewRender();
        progress_ = nullptr;
    }
    viewWidget_->repaint();
}

// ---- the view's broadcasts -----------------------------------------------------

void VZarbesoWindow_Win::HearMessage(std::int32_t message, void* parameter) {
    VZarbesoDocument::HearMessage(message, parameter);
    if (!controls_ || ended_) return;
    NumericControls* numeric = numericControls_.data();
    if (message == kMsgFieldOfViewChanged || message == kMsgViewMatrixChanged) {
        if (numeric && !updatingFromScene) numeric->FillCameraPage();
        return;
    }
    if (const int field = FieldOfMessage(message)) {
        if (numeric) numeric->FillTextField(field);
        return;
    }
    if (message == kMsgShapeFinished) {
        SelectToolButton(1063);
        SetTool(13);
    } else if (message == kMsgLightPlaced) {
        SelectToolButton(1001);
        SetTool(12);
    }
}
