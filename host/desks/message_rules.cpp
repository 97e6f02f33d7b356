#include "host/desks/message_rules.h"

#include <utility>

namespace qorhost {

using qorcred::MessageButton;
using qorcred::MessageStyle;

UnseenMessages::UnseenMessages(DeskSession& session, bool answerYes)
    : attendance_(session.attendance()) {
  constexpr bool kUnattended = true;
  former_ =
      attendance_.Replace({[answerYes](std::string_view, MessageStyle style, std::string_view) {
                             const bool agreed = answerYes && style == MessageStyle::kQuestion;
                             return agreed ? MessageButton::kYes : UnseenAnswer(style);
                           },
                           kUnattended});
}

UnseenMessages::~UnseenMessages() {
  attendance_.Replace(std::move(former_));
}

AnsweredAgain::AnsweredAgain(DeskSession& session, std::vector<ShownMessage> answers)
    : attendance_(session.attendance()), answers_{std::move(answers)} {
  attendance_.Repeat(&answers_);
}

AnsweredAgain::~AnsweredAgain() {
  attendance_.Repeat(nullptr);
}

NoticesAtTheEnd::NoticesAtTheEnd(DeskSession& session)
    : attendance_(session.attendance()), previous_(attendance_.Hold(&waiting_)) {}

NoticesAtTheEnd::~NoticesAtTheEnd() {
  attendance_.Hold(previous_);
}

void NoticesAtTheEnd::Show() {
  for (const NewMessage& notice : std::exchange(waiting_, {})) {
    attendance_.ShowAtOnce(notice);
  }
}

}  // namespace qorhost
