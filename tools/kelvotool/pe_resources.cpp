#include "tools/kelvotool/pe_resources.h"

namespace kelvo::tool {
namespace {

constexpr uint64_t kLargestFile = 64u << 20;
constexpr uint32_t kSubdirectory = 0x80000000;

}  // namespace

bool PeResources::Load(ByteSource& file) noexcept {
  const uint64_t size = file.SizeBytes();
  if (size > kLargestFile || !bytes_.Resize(static_cast<size_t>(size)) ||
      file.ReadAt(0, bytes_.data(), bytes_.size()) != ReadResult::kOk || Word(0) != 0x5A4D) {
    return false;
  }
  const size_t header = Long(0x3C);
  if (!Has(header, 24) || Long(header) != 0x00004550) return false;  // "PE", two NULs
  const size_t section_count = Word(header + 6);
  const size_t optional = header + 24;
  const size_t first_section = optional + Word(header + 20);
  for (size_t i = 0; i < section_count; ++i) {
    const size_t at = first_section + 40 * i;
    if (!Has(at, 40)) break;
    if (!sections_.Append({Long(at + 12), Long(at + 16), Long(at + 20)})) return false;
  }
  constexpr size_t kDirectories32 = 96, kDirectories64 = 112, kResources = 2 * 8;
  const bool is_64 = Word(optional) == 0x20B;
  const size_t directories = optional + (is_64 ? kDirectories64 : kDirectories32);
  const bool has_resources = Long(directories - 4) > kResources / 8;
  if (!has_resources || !OffsetOf(Long(directories + kResources), 16, &root_)) root_ = 0;
  return true;
}

bool PeResources::OffsetOf(uint32_t address, size_t size, size_t* offset) const noexcept {
  for (const Section& section : sections_) {
    const uint32_t into = address - section.address;
    if (address < section.address || into >= section.size || size > section.size - into) continue;
    *offset = static_cast<size_t>(section.offset) + into;
    return Has(*offset, size);
  }
  return false;
}

bool PeResources::DirectoryAt(uint32_t offset, Directory* directory) const noexcept {
  const size_t at = root_ + offset;
  if (root_ == 0 || !Has(at, 16)) return false;
  const size_t named = Word(at + 12), numbered = Word(at + 14);
  directory->first = at + 16 + 8 * named;
  directory->count = numbered;
  return Has(directory->first, 8 * numbered);
}

bool PeResources::Entry(const Directory& directory, uint16_t id,
                        uint32_t* leads_to) const noexcept {
  for (size_t i = 0; i < directory.count; ++i) {
    const size_t at = directory.first + 8 * i;
    if (Long(at) != id) continue;
    *leads_to = Long(at + 4);
    return true;
  }
  return false;
}

bool PeResources::KindsDirectory(ResourceKind kind, Directory* directory) const noexcept {
  Directory root;
  uint32_t leads_to;
  return DirectoryAt(0, &root) && Entry(root, static_cast<uint16_t>(kind), &leads_to) &&
         (leads_to & kSubdirectory) != 0 && DirectoryAt(leads_to & ~kSubdirectory, directory);
}

bool PeResources::IdAt(ResourceKind kind, size_t index, uint16_t* id) const noexcept {
  Directory directory;
  if (!KindsDirectory(kind, &directory) || index >= directory.count) return false;
  *id = Word(directory.first + 8 * index);
  return true;
}

bool PeResources::Find(ResourceKind kind, uint16_t id, ResourceBytes* found) const noexcept {
  Directory directory, languages;
  uint32_t leads_to;
  if (!KindsDirectory(kind, &directory) || !Entry(directory, id, &leads_to) ||
      (leads_to & kSubdirectory) == 0 || !DirectoryAt(leads_to & ~kSubdirectory, &languages) ||
      languages.count == 0) {
    return false;
  }
  const size_t leaf = root_ + Long(languages.first + 4);
  size_t offset;
  if (!Has(leaf, 16) || !OffsetOf(Long(leaf), Long(leaf + 4), &offset)) return false;
  *found = {bytes_.data() + offset, Long(leaf + 4)};
  return true;
}

bool PeResources::FindString(uint16_t id, StoredText* text) const noexcept {
  // Blocks of 16, each string a length and its characters.
  ResourceBytes block;
  if (!Find(ResourceKind::kStrings, static_cast<uint16_t>((id >> 4) + 1), &block)) return false;
  ResourceWords words(block.bytes, block.size);
  for (int skip = id & 15; skip > 0; --skip) words.NextText(words.Next());
  const size_t length = words.Next();
  *text = words.NextText(length);
  return length > 0 && text->length == length;
}

}  // namespace kelvo::tool
