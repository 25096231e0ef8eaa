#include "mapi/mail_system.h"

#include "mapi/sendmail.h"

namespace orve::adapters::mapi {

std::int32_t MailSystem::Open() {
  RequireSendmail(options_);
  const std::lock_guard lock(guard_);
  open_.insert(++last_);
  return last_;
}

bool MailSystem::Close(std::int32_t session) {
  const std::lock_guard lock(guard_);
  return open_.erase(session) > 0;
}

bool MailSystem::IsOpen(std::int32_t session) const {
  const std::lock_guard lock(guard_);
  return open_.contains(session);
}

}  // namespace orve::adapters::mapi
