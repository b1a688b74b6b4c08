#include "ui/canvas_accessible.h"

#include "analysis/diagram_descriptions.h"
#include "analysis/result_labels.h"
#include "tables/workspace.h"
#include "ui/canvas.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleWidget>
#include <QPointer>
#include <map>
#include <utility>
#include <vector>

namespace ampora::ui {

namespace {

enum class ItemKind { kWire, kDevice, kNode };
using Item = std::pair<ItemKind, int>; // the kind and its table slot

// Every item the canvas shows now, in the order a reader walks them.
std::vector<Item> ShownItems(const Canvas& canvas) {
    const Circuit& circuit = canvas.workspace().Circuit;
    std::vector<Item> items;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        if (circuit.Wires[slot].Used != 0) {
            items.emplace_back(ItemKind::kWire, slot);
        }
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        if (circuit.Elements[slot].Kind != kEmpty) {
            items.emplace_back(ItemKind::kDevice, slot);
        }
    }
    if (canvas.workspace().Step != kStepEdit) {
        const DiagramLabels labels = canvas.CurrentLabels();
        for (std::size_t slot = 1; slot < labels.Nodes.size(); ++slot) {
            if (!labels.Nodes[slot].Text.empty()) {
                items.emplace_back(ItemKind::kNode, static_cast<int>(slot));
            }
        }
    }
    return items;
}

std::vector<std::string> ValueTexts(const DiagramLabels& labels) {
    std::vector<std::string> texts;
    texts.reserve(labels.Values.size());
    for (const PlacedLabel& label : labels.Values) {
        texts.push_back(label.Text);
    }
    return texts;
}

class CanvasItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    CanvasItemAccessible(Canvas* canvas, Item item) : canvas_(canvas), item_(item) {}

    bool isValid() const override { return canvas_ != nullptr && Live(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override {
        return canvas_ != nullptr && canvas_->window()->windowHandle() != nullptr
                   ? canvas_->window()->windowHandle()
                   : nullptr;
    }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(canvas_.data());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QString text(QAccessible::Text t) const override {
        if (!isValid()) {
            return QString();
        }
        const Workspace& ws = canvas_->workspace();
        const int figs = ws.Preferences.SigFigs;
        const DiagramLabels labels = canvas_->CurrentLabels();
        const auto slot = static_cast<std::size_t>(item_.second);
        if (t == QAccessible::Name) {
            switch (item_.first) {
            case ItemKind::kWire:
                return QString::fromStdString(
                    DescribeWire(ws.Circuit, item_.second, ValueTexts(labels)));
            case ItemKind::kDevice:
                return QString::fromStdString(DescribeDevice(
                    ws, item_.second, slot < labels.Values.size() ? labels.Values[slot].Text : "",
                    figs));
            case ItemKind::kNode:
                return QString::fromStdString(DescribeNode(ws, item_.second, figs));
            }
        }
        if (t == QAccessible::Description) {
            if (item_.first == ItemKind::kNode && ws.Step == kStepName) {
                return QStringLiteral("Press Enter to name this node");
            }
            // What the label beside it shows in the chosen view.
            if (item_.first == ItemKind::kDevice && ws.Step == kStepResults &&
                slot < labels.Values.size()) {
                return QStringLiteral("Label: ") + QString::fromStdString(labels.Values[slot].Text);
            }
        }
        return QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        if (!isValid()) {
            return QRect();
        }
        const Circuit& circuit = canvas_->workspace().Circuit;
        QRectF box;
        switch (item_.first) {
        case ItemKind::kWire: {
            const Wire& w = circuit.Wires[item_.second];
            box = QRectF(QPointF(w.X1, w.Y1), QPointF(w.X2, w.Y2))
                      .normalized()
                      .adjusted(-2, -2, 2, 2);
            break;
        }
        case ItemKind::kDevice: {
            const Element& e = circuit.Elements[item_.second];
            box = QRectF(e.X - 16, e.Y - 16, 32, 32);
            break;
        }
        case ItemKind::kNode: {
            const DiagramLabels labels = canvas_->CurrentLabels();
            const LabelBox& b = labels.Nodes[static_cast<std::size_t>(item_.second)].Box;
            box = QRectF(b.Left, b.Top, b.Width, b.Height);
            break;
        }
        }
        const QRectF onWidget(canvas_->ToWidget(box.topLeft()),
                              canvas_->ToWidget(box.bottomRight()));
        return QRect(canvas_->mapToGlobal(onWidget.topLeft().toPoint()), onWidget.size().toSize());
    }

    QAccessible::Role role() const override {
        if (item_.first == ItemKind::kNode && canvas_ != nullptr &&
            canvas_->workspace().Step == kStepName) {
            return QAccessible::Button;
        }
        return QAccessible::Graphic;
    }
    QAccessible::State state() const override {
        QAccessible::State s;
        if (!isValid()) {
            s.invalid = true;
            return s;
        }
        if (item_.first == ItemKind::kNode && canvas_->workspace().Step == kStepName) {
            s.focusable = true;
            s.focused = canvas_->hasFocus() && canvas_->FocusedNode() == item_.second;
        }
        return s;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ActionInterface && item_.first == ItemKind::kNode) {
            return static_cast<QAccessibleActionInterface*>(this);
        }
        return nullptr;
    }
    QStringList actionNames() const override {
        if (canvas_ != nullptr && canvas_->workspace().Step == kStepName) {
            return {pressAction()};
        }
        return {};
    }
    void doAction(const QString& name) override {
        if (name == pressAction() && canvas_ != nullptr && canvas_->workspace().Step == kStepName &&
            Live()) {
            emit canvas_->NodeLabelClicked(item_.second);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    Item item() const { return item_; }

  private:
    bool Live() const {
        const Circuit& circuit = canvas_->workspace().Circuit;
        switch (item_.first) {
        case ItemKind::kWire:
            return item_.second <= circuit.NumWires && circuit.Wires[item_.second].Used != 0;
        case ItemKind::kDevice:
            return item_.second <= circuit.NumElements &&
                   circuit.Elements[item_.second].Kind != kEmpty;
        case ItemKind::kNode:
            return canvas_->workspace().Step != kStepEdit && item_.second <= circuit.NumNodes;
        }
        return false;
    }

    QPointer<Canvas> canvas_;
    Item item_;
};

class CanvasAccessible : public QAccessibleWidget {
  public:
    explicit CanvasAccessible(Canvas* canvas)
        : QAccessibleWidget(canvas, QAccessible::Canvas, QStringLiteral("Circuit drawing")) {}
    ~CanvasAccessible() override {
        for (const auto& [item, id] : ids_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    int childCount() const override {
        // The widgets lying over the canvas (toolbar, step panel, scroll bars) come first.
        return QAccessibleWidget::childCount() + static_cast<int>(ShownItems(*Self()).size());
    }
    QAccessibleInterface* child(int index) const override {
        const int widgets = QAccessibleWidget::childCount();
        if (index < widgets) {
            return QAccessibleWidget::child(index);
        }
        const std::vector<Item> items = ShownItems(*Self());
        const auto at = static_cast<std::size_t>(index - widgets);
        return at < items.size() ? ItemInterface(items[at]) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* item = dynamic_cast<const CanvasItemAccessible*>(child);
        if (item == nullptr) {
            return QAccessibleWidget::indexOfChild(child);
        }
        const std::vector<Item> items = ShownItems(*Self());
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (items[i] == item->item()) {
                return QAccessibleWidget::childCount() + static_cast<int>(i);
            }
        }
        return -1;
    }
    QAccessibleInterface* focusChild() const override {
        const Canvas* canvas = Self();
        if (canvas->workspace().Step == kStepName && canvas->FocusedNode() != 0) {
            return ItemInterface({ItemKind::kNode, canvas->FocusedNode()});
        }
        return QAccessibleWidget::focusChild();
    }
    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Description) {
            const Canvas* canvas = Self();
            switch (canvas->workspace().Step) {
            case kStepEdit:
                // What Space does now comes first: it changes with every key.
                return canvas->KeyHintText() + QLatin1Char(' ') +
                       QStringLiteral(
                           "Letters choose the tools: W Wire, B Battery, R Resistor, I Current "
                           "Source, N Number, M Move/Stretch, E Erase, U Undo Erase. The arrows "
                           "move "
                           "the cursor, Space or Enter acts at it, Escape abandons a drag.");
            case kStepName:
                return QStringLiteral("Tab walks the node names; Enter names the node reached.");
            default:
                return QStringLiteral(
                    "The solved circuit; keys 1 to 4 choose what the labels show.");
            }
        }
        return QAccessibleWidget::text(t);
    }

    QAccessibleInterface* ItemInterface(Item item) const {
        const auto found = ids_.find(item);
        if (found != ids_.end()) {
            if (QAccessibleInterface* known = QAccessible::accessibleInterface(found->second)) {
                return known;
            }
        }
        auto* made = new CanvasItemAccessible(const_cast<Canvas*>(Self()), item);
        ids_[item] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

  private:
    const Canvas* Self() const { return static_cast<const Canvas*>(widget()); }
    mutable std::map<Item, QAccessible::Id> ids_;
};

} // namespace

QAccessibleInterface* CanvasAccessibleFactory(const QString&, QObject* object) {
    if (auto* canvas = qobject_cast<Canvas*>(object)) {
        return new CanvasAccessible(canvas);
    }
    return nullptr;
}

void Canvas::AnnounceFocus() {
    if (!QAccessible::isActive()) {
        return;
    }
    QAccessibleInterface* self = QAccessible::queryAccessibleInterface(this);
    auto* canvas = dynamic_cast<CanvasAccessible*>(self);
    if (canvas == nullptr) {
        return;
    }
    if (workspace_.Step == kStepName && focusedNode_ != 0) {
        QAccessibleEvent focus(canvas->ItemInterface({ItemKind::kNode, focusedNode_}),
                               QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
        return;
    }
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

} // namespace ampora::ui
