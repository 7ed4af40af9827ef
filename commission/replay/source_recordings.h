#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/result.h"

namespace touch::commission {

/// The recordings of a commissioning as files: what a serial controller sent while it was measured.
/// Those in a bundle are unpacked when they are asked for, into a folder among the system's
/// temporary ones, which goes when this does.
class SourceRecordings {
 public:
  /// `source` is the folder of a run or its bundle, whosever it is; it may have none.
  static Result<SourceRecordings> of(const std::filesystem::path& source);

  /// "recording.txt", "recording-2.txt" …
  const std::vector<std::string>& names() const { return names_; }
  bool has(const std::string& name) const;
  /// The file of that name, which is one of `names`.
  Result<std::filesystem::path> file(const std::string& name);
  /// A folder that has them all; empty when there are none.
  Result<std::filesystem::path> folder();

 private:
  /// A folder that is removed with all that is in it.
  class Unpacked {
   public:
    explicit Unpacked(std::filesystem::path folder) : folder_(std::move(folder)) {}
    Unpacked(const Unpacked&) = delete;
    Unpacked& operator=(const Unpacked&) = delete;
    ~Unpacked();
    const std::filesystem::path& folder() const { return folder_; }

   private:
    std::filesystem::path folder_;
  };

  std::filesystem::path source_;
  bool isBundle_ = false;
  std::vector<std::string> names_;
  std::shared_ptr<const Unpacked> unpacked_;
};

}  // namespace touch::commission
