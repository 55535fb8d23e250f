#pragma once

#include "doubles/cf/Object.h"

#include <ApplicationServices/ApplicationServices.h>
#include <functional>
#include <map>
#include <string>

namespace quillmender::doubles {

/// Behind AXUIElementRef: one element of another application, or the system-wide one.
class Element : public Object {
  public:
    explicit Element(std::string name);
    ~Element() override;

    /// Takes over the caller's reference.
    void give(const std::string &attribute, CFTypeRef value);

    /// Makes reading, or writing, the attribute end with this error.
    void failReading(const std::string &attribute, AXError error) {
        readErrors_[attribute] = error;
    }
    /// An error, and a value all the same.
    void failReadingWithValue(const std::string &attribute, AXError error) {
        errorsWithValue_[attribute] = error;
    }
    void failWriting(const std::string &attribute, AXError error) {
        writeErrors_[attribute] = error;
    }

    /// Not owned by the caller; null when it has none.
    CFTypeRef value(const std::string &attribute) const;

    virtual AXError copy(const std::string &attribute, CFTypeRef *value) const;
    AXError set(const std::string &attribute, CFTypeRef value);

    pid_t process = 7; ///< whose element it is
    bool tellsItsProcess = true;
    /// Told of each order before it is answered, whatever the answer is.
    std::function<void(const std::string &attribute)> onSet;

    AXUIElementRef ref() const { return refOf<AXUIElementRef>(this); }
    std::string description() const override { return name_; }

  private:
    std::string name_;
    std::map<std::string, CFTypeRef> attributes_;
    std::map<std::string, AXError> readErrors_;
    std::map<std::string, AXError> errorsWithValue_;
    std::map<std::string, AXError> writeErrors_;
};

} // namespace quillmender::doubles
