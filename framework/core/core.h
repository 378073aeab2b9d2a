// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// The framework without its windows, for the program's own code, which stands in a namespace of its own and speaks the
// framework's names as they are.
#include "framework/core/Alert.h"
#include "framework/core/Application.h"
#include "framework/core/ApplicationPaths.h"
#include "framework/core/Array.h"
#include "framework/core/BinaryStream.h"
#include "framework/core/Bitwise.h"
#include "framework/core/Clock.h"
#include "framework/core/Color.h"
#include "framework/core/Date.h"
#include "framework/core/Dictionary.h"
#include "framework/core/Digest.h"
#include "framework/core/Event.h"
#include "framework/core/Exceptions.h"
#include "framework/core/FileManager.h"
#include "framework/core/FileType.h"
#include "framework/core/FolderItem.h"
#include "framework/core/Format.h"
#include "framework/core/MemoryBlock.h"
#include "framework/core/Object.h"
#include "framework/core/Random.h"
#include "framework/core/Ref.h"
#include "framework/core/Shell.h"
#include "framework/core/ShowURL.h"
#include "framework/core/SpecialFolder.h"
#include "framework/core/StackCheck.h"
#include "framework/core/String.h"
#include "framework/core/System.h"
#include "framework/core/TCPSocket.h"
#include "framework/core/Text.h"
#include "framework/core/TextEncoding.h"
#include "framework/core/TextInputStream.h"
#include "framework/core/TextOutputStream.h"
#include "framework/core/Thread.h"
#include "framework/core/Timer.h"
#include "framework/core/Variant.h"
#include "framework/core/Volume.h"
#include "framework/core/Waiting.h"

namespace marrowbeck {
using namespace framework;
}  // namespace marrowbeck
