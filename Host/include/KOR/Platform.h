#pragma once

namespace zelui::ui {
class UI_Node;
}

// A native window handle, as entry functions take their parent window. On Windows it is the
// system's HWND. Elsewhere the host has no native handles: an HWND is the address of the
// window's zelui::ui::UI_Node (null for none), converted with the two functions below.
using HWND = void*;

namespace KOR {
inline HWND HWNDFromNode(zelui::ui::UI_Node* inNode) { return static_cast<HWND>(inNode); }
inline zelui::ui::UI_Node* NodeFromHWND(HWND inWindow) { return static_cast<zelui::ui::UI_Node*>(inWindow); }
} // namespace KOR
