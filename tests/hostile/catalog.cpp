// Tags and playlists, which hosts get at through the catalog's windows alone: it is shown over a
// device that holds all of them, each in a folder of its own.
#include "kelvo/catalog.h"

#include <windows.h>

#include <commctrl.h>
#include <stdio.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include "host/system.h"
#include "res/resource_ids.h"
#include "tests/hostile/asker.h"
#include "tests/hostile/corpus.h"
#include "tests/support/user.h"
#include "tests/support/wide_text.h"

namespace kelvo::hostile {
namespace {

std::map<std::string, int> g_sent;  // how many files of each folder

void KELVO_CDECL OnPath(const wchar_t* path, HostWord) {
  if (path == kCatalogClearList || path == CatalogEndOfList()) return;
  const std::string sent = test::Utf8(path);
  ++g_sent[sent.substr(0, sent.rfind('\\'))];
}

// The leaves of a tree of genres, artists, albums and titles: "title|artist|album|genre".
std::vector<std::string> Leaves(const std::string& nodes) {
  std::vector<std::string> leaves;
  std::string labels[4];
  for (size_t at = 0; at < nodes.size();) {
    const size_t end = nodes.find('\n', at), depth = nodes.find_first_not_of(' ', at) - at;
    if (depth < 4) labels[depth] = nodes.substr(at + depth, end - at - depth);
    if (depth == 3) {
      leaves.push_back(labels[3] + "|" + labels[1] + "|" + labels[2] + "|" + labels[0]);
    }
    at = end + 1;
  }
  std::sort(leaves.begin(), leaves.end());
  return leaves;
}

// "T|A||" as the catalog shows it.
std::string Shown(const std::string& want, const char* file) {
  std::string shown;
  size_t at = 0;
  for (int field = 0; field < 4; ++field) {
    const size_t end = want == "none" ? at : std::min(want.find('|', at), want.size());
    const std::string text = want == "none" ? "" : want.substr(at, end - at);
    shown += (field ? "|" : "") + (!text.empty() ? text : field ? "Unknown" : file);
    at = end + 1;
  }
  return shown;
}

}  // namespace

int ReplayCatalog(Catalog* catalog, const std::string& root, int* files) {
  const std::filesystem::path device = root;
  const auto write = [&](const std::string& name, const std::string& file,
                         const std::string& bytes) {
    std::filesystem::create_directories(device / name);
    std::ofstream(device / name / file, std::ios::binary) << bytes;
  };
  struct List {
    std::string folder, name;
    int want;
  };
  std::vector<List> lists;
  std::vector<std::string> want;
  for (const auto& [file, corpus] :
       {std::pair("file.m3u", M3uFiles()), {"file.pls", PlsFiles()}, {"file.asx", AsxFiles()}}) {
    for (const HostileFile& list : corpus) {
      const std::string name = "L" + std::to_string(lists.size());
      const bool is_pls = file == std::string("file.pls");
      write(name, file, is_pls ? WithFolder(list.bytes, "\\" + name) : list.bytes);
      write(name, "a.mp3", "");
      lists.push_back({"\\" + name, std::string(file) + ", " + list.name, std::stoi(list.want)});
      want.push_back(Shown("none", "a.mp3"));
    }
  }
  for (const HostileFile& tagged : TaggedFiles()) {
    if (tagged.want.find('\n') != std::string::npos) continue;  // a line of Nodes() is a node
    write("T" + std::to_string(want.size()), "file.mp3", tagged.bytes);
    want.push_back(Shown(tagged.want, "file.mp3"));
  }
  std::sort(want.begin(), want.end());

  int wrong = 0;
  const velmora::DeviceDrive drive(device.wstring());
  if (!drive.ready()) return printf("catalog: %s is no device\n", root.c_str());
  test::User user([](const std::string& what) { printf("catalog: no %s\n", what.c_str()); });
  std::vector<std::string> leaves;
  std::thread hand([&] {
    const auto sheet = [&] { return user.Find(L"Playlist Organizer", L"#32770"); };
    user.Wait("sheet", [&] { return sheet() && user.Page(sheet()) && user.MenuBar(); });
    user.Wait("scan", [&] {
      return ListView_GetItemCount(user.Control(IDC_LIST)) == static_cast<int>(lists.size());
    });
    user.Settle();
    user.Do(ID_CHECK_ALL);
    user.Do(ID_ADD_CHECKED);
    user.GoTo(1);
    user.Do(ID_FIRST_ORDER);
    leaves = Leaves(user.Nodes(user.Control(IDC_TREE)));
    user.GoTo(2);
    user.Do(ID_PLAY);
    PostMessageW(sheet(), WM_SYSCOMMAND, SC_CLOSE, 0);
  });
  catalog->SetHostCallback(&OnPath, 1);
  catalog->ShowCatalog(nullptr, nullptr);
  hand.join();
  for (const List& list : lists) {
    if (g_sent[list.folder] == list.want) continue;
    ++wrong;
    printf("catalog, %s: %d instead of %d\n", list.name.c_str(), g_sent[list.folder], list.want);
  }
  std::vector<std::string> differing;
  std::set_symmetric_difference(want.begin(), want.end(), leaves.begin(), leaves.end(),
                                std::back_inserter(differing));
  for (const std::string& leaf : differing) {
    ++wrong;
    printf("catalog, one too many or missing: %s\n", leaf.c_str());
  }
  *files += static_cast<int>(want.size());
  return wrong;
}

}  // namespace kelvo::hostile
