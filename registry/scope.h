// The two scopes of the registry and the one way into them. Each scope is one file; its tree is
// kept in memory and read anew only when the file's id has changed, so that opening a key of an
// unchanged registry costs the same whatever the size of the file.
#pragma once

#include "platform/file.h"
#include "registry/tree.h"
#include "tarvo/base.h"

#include <string>
#include <string_view>

namespace TARVO {

// The path of a scope's registry.dat. Empty if the scope's data folder can't be had. Any thread.
std::u16string registryFilePath(bool allUsers);

// Gives the node at a path of a scope as the file holds it now, or null if there is no such key.
// The tree that it stands in never changes. Waits while another process writes the file, and
// excludes other threads from the scope meanwhile. Any thread.
//   path  as findKey takes it
// RC_OK; RC_ACCESS_DENIED or RC_UNSPECIFIED (the file can't be read; the scope is empty then). A
// missing file is an empty scope, and a malformed one leaves the scope as it was known before.
Result loadScope(bool allUsers, const char16_t* path, tarvo::Reference<TarvoRegistry>& node);

// The same for both scopes, up to the first that fails: all users' first, then the user's.
Result loadScopes(const char16_t* path, tarvo::Reference<TarvoRegistry>& user,
                  tarvo::Reference<TarvoRegistry>& allUsers);

// Brings a cached tree and its id in line with the file, as loadScope does for its scope. An empty
// id stands for a tree that came from no file, or from one without an id.
Result refreshTree(const std::u16string& path, tarvo::Reference<TarvoRegistry>& root,
                   std::u16string& id);

// Whether a scope's file, read from here on, is malformed. A file under an id that this process has
// read or written needs no reading for that. Commits alone call it.
bool isMalformed(bool allUsers, platform::File& file);

// Notes the id under which a commit has written the scope's file. Commits alone call it.
void noteWritten(bool allUsers, std::u16string_view id);

} // namespace TARVO
