#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <functional>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

// Measures our functions beside other libraries on one picture of 24 megapixels. In every round each contender runs once,
// and the picture is copied once, so that a drift of a shared machine touches all alike; a figure is the median of its
// rounds. Only ratios within one run mean anything. Before the clock starts every contender has run, so buffers are warm.

/// One way of doing an operation. `run` does it once and may keep its result for Check.
struct Contender {
    std::string name;
    std::function<void()> run;
};

/// What a comparison with an exact reference found.
struct Bench_Error {
    int most = 0;    ///< levels
    double mean = 0; ///< levels
};

struct Operation {
    std::string name;
    Contender ours;
    std::vector<Contender> peers;       ///< the ratio is taken to the first, the one that the goal names
    double goal = 0;                    ///< our time by the first peer's; 0 is no goal
    int allowed_error = 0;              ///< levels, largest
    std::function<Bench_Error()> check; ///< of the result of `ours`; runs once, untimed
};

/// What all operations share. The picture is a photograph as far as speed goes: gradients, edges, texture, noise.
struct Bench_Inputs {
    Bitmap picture; ///< 6000 x 4000, B,G,R
    cv::Mat mat;    ///< the same pixels, topmost row first
    Bitmap small;   ///< 1500 x 1000
    cv::Mat small_mat;
};

class Bench_Suite {
public:
    explicit Bench_Suite(const Bench_Inputs& inputs) : inputs_(inputs) {}
    const Bench_Inputs& Inputs() const { return inputs_; }
    void Add(Operation operation) { operations_.push_back(std::move(operation)); }
    const std::vector<Operation>& Operations() const { return operations_; }

private:
    const Bench_Inputs& inputs_;
    std::vector<Operation> operations_;
};

/// Makes an area known to the program: define one at namespace scope in the area's file. `add` runs after start.
struct Bench_Area {
    Bench_Area(const char* name, void (*add)(Bench_Suite&));
};

/// Copies for the reference checks.
cv::Mat Mat_Of(const Bitmap_View& view);
Bitmap Bitmap_Of(const cv::Mat& mat);

/// Pixels nearer than `margin` to an edge are left out.
Bench_Error Compare(const Bitmap_View& expected, const Bitmap_View& actual, int margin = 0);
