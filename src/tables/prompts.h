#pragma once
// What the core needs from whoever shows things to the user: message boxes titled
// "Ampora", a yes/no question and the positioned text input. The window implements it
// with Qt; the tests and the batch tool implement it with scripted answers.

#include <string>

namespace ampora {

enum class MessageIcon { None, Information, Exclamation };

struct Prompts {
    virtual ~Prompts() = default;

    // A modal message with an OK button.
    virtual void ShowMessage(const std::string& text, MessageIcon icon) = 0;
    // A modal question with Yes and No buttons and the information icon; true for Yes.
    virtual bool AskYesNo(const std::string& text) = 0;
    // The input dialog with its top-left corner at (left, top) in canvas units. Returns
    // the typed text on OK and "" on Cancel, so the two cannot be told apart.
    virtual std::string AskText(const std::string& prompt, const std::string& defaultText,
                                float left, float top) = 0;
};

} // namespace ampora
