// UtilityApp: %TOKEN% expansion in paths and the named paths behind it.
#include <znutil/application/UtilityApp.h>

#include <znutil/application/ZnNamePathPair.h>
#include <znutil/containers/ZnTStringKeyOrderedList.h>
#include <znutil/platform/UserHome.h>
#include <znutil/system/ZnDirectory.h>

namespace {

char const kMark = '%';

// Paths may be expanded on several threads at once, and string counts are
// plain: the process-wide texts are handed out and stored as copies of
// their characters, never as shares of their storage.
ZnString Copied(ZnString const &text) { return ZnString(text.Chars()); }

// The named paths of SetPath, owned: an owning list of pairs deletes them.
ZnTStringKeyOrderedList<ZnNamePathPair> &NamePathPairs() {
  static ZnTStringKeyOrderedList<ZnNamePathPair> plNamePathPairs(true);
  return plNamePathPairs;
}

ZnString NamedPath(ZnString const &token) {
  ZnListContext position;
  ZnNamePathPair const *pair = NamePathPairs().Find(token.ToLower(), position);
  return pair != nullptr ? Copied(pair->GetPath()) : ZnString();
}

// The value of the token between two marks; built-in names first.
ZnString TokenValue(ZnString const &token) {
  ZnString const name = token.ToUpper();
  if (name == "APPNAME") return Copied(UtilityApp::AppName());
  if (name == "STARTUPDIR") return Copied(UtilityApp::StartupDir());
  if (name == "PLUGINDIR") return UtilityApp::PluginDirectory();
  if (name == "APPVERSION") return ZnString("Tesserae_2.13");
  if (name == "HOME") return ZnString(znutil::platform::UserHomeDirectory().c_str());
  // An empty token is unknown whatever SetPath was given.
  return token == NULL_STRING ? ZnString() : NamedPath(token);
}

}  // namespace

ZnString UtilityApp::ParsePath(ZnString const &path) {
  int mark = path.HaveCharacter(kMark);
  if (mark < 0) return ZnDirectory::RemoveRelativePartsFromAbsolutePath(path);
  ZnString result = path.LeftString(mark);
  for (;;) {
    int const close = path.HaveCharacter(kMark, mark + 1);
    // An unclosed mark cuts the rest, and the result stays as it is.
    if (close < 0) return result;
    result << TokenValue(path.MidString(mark + 1, close - mark - 1));
    mark = path.HaveCharacter(kMark, close + 1);
    if (mark < 0) {
      result << path.RightString(path.Length() - close - 1);
      return ZnDirectory::RemoveRelativePartsFromAbsolutePath(result);
    }
    result << path.MidString(close + 1, mark - close - 1);
  }
}

void UtilityApp::SetPath(ZnString const &name, ZnString const &path) {
  if (name == NULL_STRING) return;
  ZnString const key = name.ToLower();
  ZnListContext position;
  ZnNamePathPair *pair = NamePathPairs().Find(key, position);
  if (path == NULL_STRING) {
    if (pair != nullptr) NamePathPairs().Delete(key);
  } else if (pair != nullptr) {
    pair->SetPath(Copied(path));
  } else {
    NamePathPairs().Add(new ZnNamePathPair(Copied(name), Copied(path)));
  }
}
