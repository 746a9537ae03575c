#pragma once

#include <string>

namespace zelui::ui {

// The host's key codes. Keys that type a character have kKey_Character and carry it.
inline constexpr int kKey_Character = 0;
inline constexpr int kKey_Backspace = 2;
inline constexpr int kKey_Delete = 3;
inline constexpr int kKey_Tab = 35;
inline constexpr int kKey_Left = 42;
inline constexpr int kKey_Right = 43;
inline constexpr int kKey_Home = 44;
inline constexpr int kKey_End = 45;
inline constexpr int kKey_Up = 46;
inline constexpr int kKey_Down = 47;
inline constexpr int kKey_Return = 48;
inline constexpr int kKey_Escape = 49;
inline constexpr int kKey_Other = 99;

// Modifier keys held, as bits.
inline constexpr unsigned int kModifier_Shift = 1;
inline constexpr unsigned int kModifier_Command = 4; // the platform's command key: Ctrl here
inline constexpr unsigned int kModifier_Control = 8;
inline constexpr unsigned int kModifier_Option = 16; // Alt

struct KeyboardEvent {
    int keyCode = kKey_Other;
    wchar_t character = 0;
    bool keyDown = true;
    bool autoRepeat = false; // a press repeated while the key is held
    unsigned int modifiers = 0;
};

struct MouseEvent {
    enum class Type { kDown, kDrag, kUp, kClick };
    Type type = Type::kDown;
    int button = 1; // 1 is the main button
    unsigned int modifiers = 0;
    int x = 0;
    int y = 0;
};

struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace zelui::ui
