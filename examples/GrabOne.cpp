/// Saves one grey picture of a channel: a host in C++ that needs only aik.hpp and the names of features. It
/// connects the first camera of the board, starts channel and camera, and writes what comes as a PGM file.
///
///   GrabOne <path of the adapter> <file> [channel]
///
/// Prints the failure, if there is one, and exits with 1.

#include "aik/aik.hpp"

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

// Each call of grab() waits up to 7 ms for a picture. This many calls are enough to give up on it.
constexpr int kMostCalls = 3000;

aik::Picture grabNext(aik::Channel& channel)
{
    for (int calls = 0; calls < kMostCalls; ++calls)
        if (const auto picture = channel.grab())
            return *picture;
    throw std::runtime_error("no picture came");
}

void save(const aik::Picture& picture, const std::string& path)
{
    if (picture.format != AIK_PIXEL_MONO8 || picture.isPlanar)
        throw std::runtime_error("the picture is not grey with 8 bits");
    std::ofstream file(path, std::ios::binary);
    file << "P5 " << picture.width << ' ' << picture.height << " 255\n";
    file.write(reinterpret_cast<const char*>(picture.bytes.data()),
               static_cast<std::streamsize>(picture.bytes.size()));
    if (!file.flush())
        throw std::runtime_error("can't write " + path);
}

void grabOne(const std::string& adapterPath, const std::string& path, int index)
{
    const aik::Adapter adapter(adapterPath);
    aik::Channel channel = adapter.open(index);
    channel.write("AcquisitionStrategy", "NewestOnly");
    channel.setup();

    channel.execute("InitializeCameraConnector");
    channel.execute("Detect");   // and port 0 is selected
    channel.write("CameraFeatureKey", "ExposureTime");
    channel.write("CameraFloatValue", 5000.0);   // in microseconds
    std::printf("exposure: %g us\n", channel.read<double>("CameraFloatValue"));

    channel.start();   // before the camera, so that no picture is lost
    channel.execute("StartAcquisition");
    save(grabNext(channel), path);
    channel.execute("StopAcquisition");
    channel.stop();
    channel.execute("CloseCameraConnector");
}   // releases the channel

}   // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return std::fputs("GrabOne <path of the adapter> <file> [channel]\n", stderr), 2;
    try {
        grabOne(argv[1], argv[2], argc > 3 ? std::stoi(argv[3]) : 0);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "GrabOne: %s\n", failure.what());
        return 1;
    }
}
