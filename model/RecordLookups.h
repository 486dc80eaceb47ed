#pragma once

#include "PFQuery.h"

#include <memory>

class FreelanceCategory;
class Freelancer;
class User;

// The user's own Freelancer record: newest first (the first result is the one to use), with
// role, sub-category and user filled in.
[[nodiscard]] PFQuery freelancerQuery(const std::shared_ptr<User> &user);
// The freelancer's live stream: newest first, the first result is the stream.
[[nodiscard]] PFQuery liveStreamQuery(const std::shared_ptr<Freelancer> &freelancer);
// A new, unsaved Freelancer record for a user registering under a role. Its skills,
// languages and unavailable days start empty, whatever the role.
[[nodiscard]] std::shared_ptr<Freelancer> makeFreelancer(const std::shared_ptr<FreelanceCategory> &category,
                                                         const std::shared_ptr<User> &user);
