// SPDX-License-Identifier: GPL-2.0-or-later
// All that uses libvips; see PictureLibrary.h for what it gives.

#include <gmodule.h>
#include <vips/vips.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/pictures/LoadableContent.h"
#include "tools/pictures/PictureLibrary.h"
#include "tools/pictures/QuickDraw.h"

namespace marrowbeck::tools {

namespace {

using namespace std::string_view_literals;

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
using Image = std::unique_ptr<VipsImage, Unref>;
using Source = std::unique_ptr<VipsSource, Unref>;

/// The loaders that may see a file, each with all its kinds of sources. Everything else that libvips knows, from PDF
/// to tables of numbers, is no picture of a camera or a painter, and is more to be feared than to be missed.
constexpr const char* allowedLoaders[] = {
    "VipsForeignLoadJpeg", "VipsForeignLoadPng",    "VipsForeignLoadNsgif",   "VipsForeignLoadTiff",
    "VipsForeignLoadWebp", "VipsForeignLoadHeif",   "VipsForeignLoadJxl",     "VipsForeignLoadJp2k",
    "VipsForeignLoadPpm",  "VipsForeignLoadMagick", "VipsForeignLoadMagick7",
};

/// What an operation of libvips gave, or nothing, with what it complained about forgotten. By reference: a call may
/// write to `image` in the same expression.
Image checked(int failure, VipsImage* const& image) {
    vips_error_clear();
    return Image(failure == 0 ? image : nullptr);
}

std::string_view textOf(Content content) {
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

/// Of a Photoshop file that is gray or CMYK, its loader mistakes one plane for another.
bool isMistaken(std::string_view head) {
    constexpr std::size_t colourMode = 25;
    constexpr char rgb = 3;
    return head.starts_with("8BPS") && head.size() > colourMode && head[colourMode] != rgb;
}

std::string blobOf(VipsImage* image, const char* name) {
    const void* data = nullptr;
    std::size_t size = 0;
    if (vips_image_get_typeof(image, name) == 0 || vips_image_get_blob(image, name, &data, &size) != 0) return {};
    return {static_cast<const char*>(data), size};
}

int numberOf(VipsImage* image, const char* name, int otherwise) {
    int number = otherwise;
    if (vips_image_get_typeof(image, name) != 0) vips_image_get_int(image, name, &number);
    return number;
}

/// Whether the loader has turned the picture as its format says.
bool isUpright(VipsImage* image) {
    const char* loader = "";
    if (vips_image_get_typeof(image, VIPS_META_LOADER) != 0) vips_image_get_string(image, VIPS_META_LOADER, &loader);
    return std::string_view(loader).starts_with("heif") || std::string_view(loader).starts_with("jxl");
}

ColourModel modelOf(VipsImage* image) {
    switch (vips_image_guess_interpretation(image)) {
        case VIPS_INTERPRETATION_B_W:
        case VIPS_INTERPRETATION_GREY16:
            return ColourModel::gray;
        case VIPS_INTERPRETATION_sRGB:
        case VIPS_INTERPRETATION_RGB:
        case VIPS_INTERPRETATION_RGB16:
        case VIPS_INTERPRETATION_scRGB:
            return ColourModel::rgb;
        case VIPS_INTERPRETATION_CMYK:
            return ColourModel::cmyk;
        case VIPS_INTERPRETATION_LAB:
        case VIPS_INTERPRETATION_LABS:
        case VIPS_INTERPRETATION_LABQ:
            return ColourModel::lab;
        default:
            return ColourModel::unknown;
    }
}

/// The bits of a stored sample. What the loader makes of few bits is whole bytes; PNG keeps their number in a fixed
/// place (ISO/IEC 15948, IHDR).
unsigned bitsOf(VipsImage* image, Content content) {
    constexpr std::size_t pngDepth = 24;
    if (textOf(content).starts_with("\x89PNG") && content.size() > pngDepth) return content[pngDepth];
    if (textOf(content).starts_with("P1") || textOf(content).starts_with("P4")) return 1;
    const int deep = numberOf(image, "heif-bitdepth", 0);
    if (deep > 0) return static_cast<unsigned>(deep);
    return static_cast<unsigned>(vips_format_sizeof(vips_image_get_format(image)) * 8);
}

void addText(VipsImage* /*image*/, const char* field, GValue* value,
             std::vector<std::pair<std::string, std::string>>& texts) {
    // "png-comment-3-Description"
    constexpr std::string_view prefix = "png-comment-";
    const std::string_view name = field;
    const std::size_t dash = name.starts_with(prefix) ? name.find('-', prefix.size()) : std::string_view::npos;
    const char* const text = dash == std::string_view::npos ? nullptr : vips_value_get_ref_string(value, nullptr);
    if (text != nullptr) texts.emplace_back(name.substr(dash + 1), text);
}

class VipsPictures final : public PictureLibrary {
  public:
    VipsPictures(std::string modules, const char* dataFolder) : modules_(std::move(modules)) {
        // Where it looks for modules by itself: nowhere. All of them together take longer to load than all the rest,
        // and some read formats that are not wanted.
        setenv("VIPSHOME", "/nonexistent", 1);
        setenv("MAGICK_CONFIGURE_PATH", dataFolder, 1);
        g_log_set_default_handler([](const char*, GLogLevelFlags, const char*, void*) {}, nullptr);
        ready_ = vips_init("marrowbeck") == 0;
        if (!ready_) return;
        vips_concurrency_set(1);
        vips_cache_set_max(0);
        allowLoaders();
    }

    PictureHeader header(Content original) override {
        LoadableContent loadable(original);
        PictureHeader header;
        const Image image = open(loadable);
        if (!image) return header;
        const Content content = loadable.content();
        header.width = static_cast<std::uint32_t>(vips_image_get_width(image.get()));
        header.height = static_cast<std::uint32_t>(vips_image_get_height(image.get()));
        header.channels = static_cast<unsigned>(vips_image_get_bands(image.get()));
        header.bitsPerChannel = bitsOf(image.get(), content);
        header.colour = modelOf(image.get());
        // A packed Lab has four bands for three channels.
        header.alpha = vips_image_get_coding(image.get()) == VIPS_CODING_NONE && vips_image_hasalpha(image.get()) != 0;
        header.upright = isUpright(image.get());
        header.profile = blobOf(image.get(), VIPS_META_ICC_NAME);
        header.xmp = blobOf(image.get(), VIPS_META_XMP_NAME);
        header.exif = blobOf(image.get(), VIPS_META_EXIF_NAME);
        if (header.exif.starts_with("Exif\0\0"sv)) header.exif.erase(0, 6);
        const auto add = [](VipsImage* where, const char* field, GValue* value, void* texts) -> void* {
            addText(where, field, value, *static_cast<decltype(header.texts)*>(texts));
            return nullptr;
        };
        vips_image_map(image.get(), add, &header.texts);
        return header;
    }

    Pixels picture(Content original, int side, int orientation) override {
        LoadableContent loadable(original);
        const Image image = open(loadable);
        if (!image || isMistaken(loadable.bytes())) return {};
        Image whole = inMemory(forScreen(thumbnail(image.get(), loadable.content(), side)));
        if (!whole) whole = topInMemory(forScreen(thumbnail(image.get(), loadable.content(), side)));
        if (!whole) return {};
        if (loadable.orientation() != 0) orientation = loadable.orientation();
        return pixelsOf(isUpright(image.get()) ? std::move(whole) : turned(std::move(whole), orientation));
    }

    void warmUp() override {
        loadModule(heif_);
        loadModule(jxl_);
        loadModule(magick_);
        if (ReadQuickDraw* const read = quickDraw()) {
            QuickDrawPicture none;
            read({}, none);
        }
    }

  private:
    struct Module {
        const char* name;
        bool loaded = false;
    };

    static void allowLoaders() {
        vips_operation_block_set("VipsForeignLoad", TRUE);
        for (const char* const loader : allowedLoaders) vips_operation_block_set(loader, FALSE);
    }

    /// A module of libvips brings its own loaders, which are blocked or not as the others are.
    static void loadModule(Module& module) {
        if (module.loaded) return;
        module.loaded = true;
        const std::string path = std::string(VIPS_MODULES) + "/" + module.name;
        if (GModule* const opened = g_module_open(path.c_str(), G_MODULE_BIND_LAZY)) g_module_make_resident(opened);
        allowLoaders();
    }

    ReadQuickDraw* quickDraw() {
        if (!isQuickDrawLoaded_) {
            isQuickDrawLoaded_ = true;
            GModule* const opened = g_module_open((modules_ + "/quickdraw.so").c_str(), G_MODULE_BIND_LAZY);
            gpointer read = nullptr;
            if (opened != nullptr && g_module_symbol(opened, "readQuickDraw", &read) != 0) {
                g_module_make_resident(opened);
                readQuickDraw_ = reinterpret_cast<ReadQuickDraw*>(read);
            }
        }
        return readQuickDraw_;
    }

    Image openPict(Content content) {
        ReadQuickDraw* const read = quickDraw();
        QuickDrawPicture picture;
        if (read != nullptr) read(content, picture);
        const Pixels& pixels = picture.pixels;
        if (pixels.width == 0) return nullptr;
        const Image image(vips_image_new_from_memory_copy(pixels.bytes.data(), pixels.bytes.size(), pixels.width,
                                                          pixels.height, pixels.channels, VIPS_FORMAT_UCHAR));
        VipsImage* meant = nullptr;
        Image named =
            checked(vips_copy(image.get(), &meant, "interpretation", VIPS_INTERPRETATION_sRGB, nullptr), meant);
        if (named && !picture.profile.empty())
            vips_image_set_blob_copy(named.get(), VIPS_META_ICC_NAME, picture.profile.data(), picture.profile.size());
        return named;
    }

    /// Loads what the content needs; by its first bytes, whatever the name says.
    void prepareFor(std::string_view head) {
        if (head.substr(std::min<std::size_t>(head.size(), 4)).starts_with("ftyp")) loadModule(heif_);
        if (head.starts_with("\xff\x0a") || head.starts_with("\0\0\0\x0cJXL "sv)) loadModule(jxl_);
    }

    /// Netpbm pictures are read from a source only; ImageMagick would take them, but may not.
    static bool isNetpbm(std::string_view head) {
        return head.size() > 2 && head[0] == 'P' && head[1] >= '1' && head[1] <= '7';
    }

    static bool isLoadable(Content content) {
        return vips_foreign_find_load_buffer(content.data(), content.size()) != nullptr;
    }

    /// The picture as it will be decoded, once somebody asks for pixels.
    Image open(LoadableContent& loadable) {
        if (!ready_ || loadable.content().empty()) return nullptr;
        if (loadable.isPict()) return openPict(loadable.content());
        Image image = openBy(loadable.content());
        return image || !loadable.leaveOutExtras() ? std::move(image) : openBy(loadable.content());
    }

    Image openBy(Content content) {
        prepareFor(textOf(content));
        const bool netpbm = isNetpbm(textOf(content));
        if (!netpbm && !isLoadable(content)) loadModule(magick_);
        vips_error_clear();
        if (!netpbm) {
            VipsImage* const image = vips_image_new_from_buffer(content.data(), content.size(), "", "access",
                                                                VIPS_ACCESS_SEQUENTIAL, nullptr);
            return checked(0, image);
        }
        const Source source(vips_source_new_from_memory(content.data(), content.size()));
        return checked(0, vips_image_new_from_source(source.get(), "", "access", VIPS_ACCESS_SEQUENTIAL, nullptr));
    }

    /// Numbers that are no bytes of a screen: made so before they are scaled, as what is scaled is taken for bytes.
    static Image screenRange(VipsImage* image) {
        const VipsBandFormat format = vips_image_get_format(image);
        double factor = 0;
        if (format == VIPS_FORMAT_UINT) factor = 1.0 / (1 << 24);
        if (format == VIPS_FORMAT_FLOAT || format == VIPS_FORMAT_DOUBLE) {
            const ColourModel model = modelOf(image);
            if (model == ColourModel::lab || model == ColourModel::cmyk) return nullptr;
            if (vips_image_guess_interpretation(image) == VIPS_INTERPRETATION_scRGB) return nullptr;
            factor = 255;
        }
        if (factor == 0) return nullptr;
        VipsImage* scaled = nullptr;
        const Image linear = checked(vips_linear1(image, &scaled, factor, 0.0, nullptr), scaled);
        if (!linear) return nullptr;
        VipsImage* bytes = nullptr;
        Image cast = checked(vips_cast_uchar(linear.get(), &bytes, nullptr), bytes);
        if (!cast) return nullptr;
        VipsImage* meant = nullptr;
        const bool gray = vips_image_get_bands(image) < 3;
        return checked(vips_copy(cast.get(), &meant, "interpretation",
                                 gray ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB, nullptr),
                       meant);
    }

    static Image thumbnail(VipsImage* image, Content content, int side) {
        const int longer = std::max(vips_image_get_width(image), vips_image_get_height(image));
        // Fitted into its own size a picture is not enlarged. The library's own sign for that is held against the
        // smallest picture of a file, and those that have small copies inside would come too small.
        const int box = std::min(side, longer);
        const ColourModel model = modelOf(image);
        // Only where there is something to convert: to make ready a conversion takes as long as a third of a JPEG.
        const bool convert = vips_image_get_typeof(image, VIPS_META_ICC_NAME) != 0 ||
                             (model != ColourModel::rgb && model != ColourModel::gray);
        VipsImage* small = nullptr;
        if (const Image ranged = screenRange(image)) {
            return checked(vips_thumbnail_image(ranged.get(), &small, box, "height", box, "no_rotate", TRUE, nullptr),
                           small);
        }
        auto* const data = const_cast<std::uint8_t*>(content.data());
        const char* const option = convert ? "export_profile" : nullptr;
        if (vips_image_get_typeof(image, VIPS_META_LOADER) == 0) {
            return checked(
                vips_thumbnail_image(image, &small, box, "height", box, "no_rotate", TRUE, option, "srgb", nullptr),
                small);
        }
        if (!isNetpbm(textOf(content))) {
            return checked(vips_thumbnail_buffer(data, content.size(), &small, box, "height", box, "no_rotate", TRUE,
                                                 option, "srgb", nullptr),
                           small);
        }
        const Source source(vips_source_new_from_memory(data, content.size()));
        return checked(
            vips_thumbnail_source(source.get(), &small, box, "height", box, "no_rotate", TRUE, option, "srgb", nullptr),
            small);
    }

    /// In sRGB with 8 bits a channel, three channels or four.
    static Image forScreen(Image image) {
        VipsImage* next = nullptr;
        if (image && vips_image_get_interpretation(image.get()) != VIPS_INTERPRETATION_sRGB)
            image = checked(vips_colourspace(image.get(), &next, VIPS_INTERPRETATION_sRGB, nullptr), next);
        if (image && vips_image_get_format(image.get()) != VIPS_FORMAT_UCHAR)
            image = checked(vips_cast_uchar(image.get(), &next, nullptr), next);
        if (image && vips_image_get_bands(image.get()) > 4)
            image = checked(vips_extract_band(image.get(), &next, 0, "n", 3, nullptr), next);
        return image && vips_image_get_bands(image.get()) >= 3 ? std::move(image) : nullptr;
    }

    static Image inMemory(const Image& image) {
        return checked(0, image ? vips_image_copy_memory(image.get()) : nullptr);
    }

    /// Of a picture that breaks off, the rows down to there; the others stay black. Nothing where there are none.
    static Image topInMemory(const Image& image) {
        if (!image) return nullptr;
        constexpr int rows = 4;
        const int width = vips_image_get_width(image.get());
        const int height = vips_image_get_height(image.get());
        std::string bytes;
        const std::unique_ptr<VipsRegion, Unref> region(vips_region_new(image.get()));
        int read = 0;
        while (read < height) {
            const int count = std::min(rows, height - read);
            std::size_t size = 0;
            const std::unique_ptr<VipsPel, void (*)(void*)> some(
                vips_region_fetch(region.get(), 0, read, width, count, &size), g_free);
            if (!some) break;
            bytes.append(reinterpret_cast<const char*>(some.get()), size);
            read += count;
        }
        vips_error_clear();
        if (read == 0) return nullptr;
        bytes.resize(bytes.size() / static_cast<std::size_t>(read) * static_cast<std::size_t>(height), '\0');
        return checked(0, vips_image_new_from_memory_copy(bytes.data(), bytes.size(), width, height,
                                                          vips_image_get_bands(image.get()), VIPS_FORMAT_UCHAR));
    }

    static Image turned(Image image, int orientation) {
        if (orientation <= 1 || orientation > 8) return image;
        vips_image_set_int(image.get(), VIPS_META_ORIENTATION, orientation);
        VipsImage* next = nullptr;
        return checked(vips_autorot(image.get(), &next, nullptr), next);
    }

    static Pixels pixelsOf(const Image& image) {
        std::size_t size = 0;
        const std::unique_ptr<void, void (*)(void*)> bytes(
            image ? vips_image_write_to_memory(image.get(), &size) : nullptr, g_free);
        vips_error_clear();
        if (!bytes) return {};
        return {vips_image_get_width(image.get()), vips_image_get_height(image.get()),
                vips_image_get_bands(image.get()), std::string(static_cast<const char*>(bytes.get()), size)};
    }

    const std::string modules_;
    bool ready_ = false;
    Module heif_{"vips-heif.so"};
    Module jxl_{"vips-jxl.so"};
    Module magick_{"vips-magick.so"};
    bool isQuickDrawLoaded_ = false;
    ReadQuickDraw* readQuickDraw_ = nullptr;
};

}  // namespace

}  // namespace marrowbeck::tools

/// How the tools get at the library when they have loaded this module; `modules` is the folder in which it lies,
/// `dataFolder` holds ImageMagick's policy.
extern "C" marrowbeck::tools::PictureLibrary* makePictureLibrary(const char* modules, const char* dataFolder) {
    static marrowbeck::tools::VipsPictures library(modules, dataFolder);
    return &library;
}
