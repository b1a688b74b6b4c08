#pragma once
// A Prompts fake: records every message and question, answers from scripted queues.

#include "tables/prompts.h"

#include <deque>
#include <string>
#include <vector>

namespace ampora::test {

struct ScriptedPrompts : Prompts {
    std::vector<std::string> messages;   // every text shown, in order
    std::vector<std::string> questions;  // every yes/no question and text prompt, in order
    std::deque<bool> yesNoAnswers;       // answered in order; No when the queue is empty
    std::deque<std::string> textAnswers; // answered in order; "" (Cancel) when empty

    void ShowMessage(const std::string& text, MessageIcon icon) override {
        messages.push_back(std::string(icon == MessageIcon::Exclamation ? "(!) " : "") + text);
    }
    bool AskYesNo(const std::string& text) override {
        questions.push_back(text);
        if (yesNoAnswers.empty()) {
            return false;
        }
        const bool answer = yesNoAnswers.front();
        yesNoAnswers.pop_front();
        return answer;
    }
    std::string AskText(const std::string& prompt, const std::string& defaultText, float,
                        float) override {
        questions.push_back(prompt + " [" + defaultText + "]");
        if (textAnswers.empty()) {
            return "";
        }
        std::string answer = textAnswers.front();
        textAnswers.pop_front();
        return answer;
    }
};

} // namespace ampora::test
