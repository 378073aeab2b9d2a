// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// The framework without its windows, for the program's own code, which stands in a namespace of its own and speaks the
// framework's names as they are.
#include "framework/core/desktop/Alert.h"
#include "framework/core/desktop/Application.h"
#include "framework/core/desktop/FileManager.h"
#include "framework/core/desktop/NotOpened.h"
#include "framework/core/files/ApplicationPaths.h"
#include "framework/core/files/BinaryStream.h"
#include "framework/core/files/FileType.h"
#include "framework/core/files/FolderItem.h"
#include "framework/core/files/SpecialFolder.h"
#include "framework/core/files/TextInputStream.h"
#include "framework/core/files/TextOutputStream.h"
#include "framework/core/files/Volume.h"
#include "framework/core/network/TCPSocket.h"
#include "framework/core/objects/Array.h"
#include "framework/core/objects/Bitwise.h"
#include "framework/core/objects/Color.h"
#include "framework/core/objects/Dictionary.h"
#include "framework/core/objects/Exceptions.h"
#include "framework/core/objects/Fields.h"
#include "framework/core/objects/MemoryBlock.h"
#include "framework/core/objects/Object.h"
#include "framework/core/objects/Random.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/objects/System.h"
#include "framework/core/objects/Variant.h"
#include "framework/core/process/Shell.h"
#include "framework/core/process/ShowURL.h"
#include "framework/core/text/Digest.h"
#include "framework/core/text/Format.h"
#include "framework/core/text/String.h"
#include "framework/core/text/Text.h"
#include "framework/core/text/TextEncoding.h"
#include "framework/core/threads/Event.h"
#include "framework/core/threads/OwnThread.h"
#include "framework/core/threads/StackCheck.h"
#include "framework/core/threads/Thread.h"
#include "framework/core/threads/Waiting.h"
#include "framework/core/time/Clock.h"
#include "framework/core/time/Date.h"
#include "framework/core/time/Timer.h"

namespace marrowbeck {
using namespace framework;
}  // namespace marrowbeck
