#pragma once

namespace quillmender {

/// From now on a crash of this process leaves no core file: the soft limit is 0. For handlers that
/// the kernel pipes cores to whatever the limit is, the private memory is left out too.
void forbidCoreFiles();

/// Gives the calling process back what the user's session had when forbidCoreFiles() was called.
/// For the child that is to become another program, between fork and exec: it uses nothing but
/// system calls.
void restoreCoreFiles() noexcept;

} // namespace quillmender
