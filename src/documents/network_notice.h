#pragma once

#include <string>

namespace quillmere {

// Tells the user that a document's network location did not answer within the time that the
// settings give it.
void showNetworkUnavailable();

// Asks a network location whether it answers, and tells the user if it does not. True for other
// paths and for a file that is missing there.
bool networkAnswers(const std::u16string& path);

}  // namespace quillmere
