#pragma once

#include <map>
#include <string>

namespace quillmender::doubles {

/// Counts, for each kind of framework object, the references that somebody still has to give back.
class LiveObjects {
  public:
    static LiveObjects &shared();

    void gained(const std::string &kind) { ++references_[kind]; }
    void gaveBack(const std::string &kind) { --references_[kind]; }
    void clear() { references_.clear(); }

    /// Every kind whose references do not come out even, as "CFString 1 CFData -1"; empty when all
    /// do. More than none are leaked, fewer are released too often.
    std::string uneven() const;

  private:
    std::map<std::string, long> references_;
};

} // namespace quillmender::doubles
