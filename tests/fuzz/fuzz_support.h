// What the fuzz targets share: a scratch folder of their own for the files
// the readers take, and the bundled sample converted once for the targets
// that need a corpus.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/import.h"

namespace suizo::fuzzing {

inline const std::filesystem::path& Scratch() {
  static const std::filesystem::path folder = [] {
    auto path =
        std::filesystem::temp_directory_path() / ("suizo-fuzz-" + std::to_string(::getpid()));
    std::filesystem::create_directories(path);
    std::atexit([] { std::filesystem::remove_all(Scratch()); });
    return path;
  }();
  return folder;
}

// The input as a file of the scratch folder.
inline std::filesystem::path WriteInput(std::string_view name, const std::uint8_t* data,
                                        std::size_t size) {
  const std::filesystem::path path = Scratch() / std::string(name);
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  return path;
}

// The input read as UTF-16 units, little-endian.
inline std::u16string Units(const std::uint8_t* data, std::size_t size) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < size; i += 2)
    units += static_cast<char16_t>(data[i] | (data[i + 1] << 8));
  return units;
}

// The bundled sample, converted into the scratch folder once.
inline const std::filesystem::path& SampleStore() {
  static const std::filesystem::path folder = [] {
    const auto path = Scratch() / "sample";
    std::filesystem::copy(std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample", path,
                          std::filesystem::copy_options::recursive);
    corpus::Corpus imported(path);
    corpus::ReadDataFirst(imported, corpus::ImportOptionsFor(path));
    return path;
  }();
  return folder;
}

}  // namespace suizo::fuzzing
