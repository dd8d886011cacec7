#include "QuilloLinux/Desktop/DesktopEntries.h"

#include <gio/gdesktopappinfo.h>

#include <memory>
#include <string_view>
#include <utility>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo::DesktopEntries {
namespace {

struct Unref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
using AppInfo = std::unique_ptr<GDesktopAppInfo, Unref>;

constexpr std::string_view ending = ".desktop";

DesktopEntry entryOf(GAppInfo* info) {
  DesktopEntry entry;
  if (const char* id = g_app_info_get_id(info)) entry.id = replacingInvalidUtf8(id);
  if (entry.id.ends_with(ending)) entry.id.resize(entry.id.size() - ending.size());
  if (const char* name = g_app_info_get_name(info)) entry.localizedName = bringingToOneLine(replacingInvalidUtf8(name));
  return entry;
}

std::optional<DesktopEntry> findById(const std::string& id) {
  if (id.empty() || id.find('/') != std::string::npos) return std::nullopt;
  const AppInfo info(g_desktop_app_info_new((id + std::string(ending)).c_str()));
  return info ? std::optional(entryOf(G_APP_INFO(info.get()))) : std::nullopt;
}

std::optional<DesktopEntry> findByStartupClass(const std::string& windowClass) {
  const std::string wanted = lowercased(windowClass);
  GList* all = g_app_info_get_all();
  std::optional<DesktopEntry> found;
  for (GList* item = all; item != nullptr && !found; item = item->next) {
    const char* startupClass = g_desktop_app_info_get_startup_wm_class(G_DESKTOP_APP_INFO(item->data));
    if (startupClass != nullptr && lowercased(replacingInvalidUtf8(startupClass)) == wanted) {
      found = entryOf(G_APP_INFO(item->data));
    }
  }
  g_list_free_full(all, g_object_unref);
  return found;
}

}  // namespace

std::optional<DesktopEntry> findByWindowClass(const std::string& windowClass) {
  if (auto entry = findById(windowClass)) return entry;
  if (auto entry = findById(lowercased(windowClass))) return entry;
  return findByStartupClass(windowClass);
}

}  // namespace quillo::DesktopEntries
