// What a job keeps from one edit to the next.

#include "tests/rename/Naming_Inputs.h"

#include "evaluate/System_Host.h"
#include "tests/rename/Rename_Reference.h"

#include <gtest/gtest.h>
#include <random>

namespace {

class Rename_Job_Test : public testing::Test {
protected:
    Formula::System_Host host;
};

TEST_F(Rename_Job_Test, The_Start_Field_Is_Enabled_By_A_Serial)
{
    EXPECT_FALSE(Rename_Job(host, Rows_Of({"beach.jpg"})).Start_Numbering_Enabled());
    const Rename_Job job(host, Rows_Of({"IMG_3.jpg", "IMG_9.jpg", "IMG_4.jpg"}));
    EXPECT_TRUE(job.Start_Numbering_Enabled());
    EXPECT_EQ(job.Inputs().start_numbering, "4");
    EXPECT_EQ(job.Smallest_Serial(), 4);
    EXPECT_EQ(job.Largest_Serial(), 9);
}

TEST_F(Rename_Job_Test, A_Match_Behind_The_Beginning_Leaves_The_Name_As_It_Was)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg"}));
    job.Set_Inputs(Pattern("IMG", "Trip"));
    job.Set_Inputs(Pattern("MG", "Sea"));
    EXPECT_EQ(New_Names(job), QStringList{"Trip_7.jpg"});
}

TEST_F(Rename_Job_Test, Another_Interval_Keeps_What_Was_Typed_As_Start)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg", "IMG_8.jpg"}));
    Rename_Inputs inputs = Reserialized(From_To("IMG", "T"), "1");
    job.Set_Inputs(inputs);
    inputs = job.Inputs();
    inputs.start_numbering = "100";
    job.Set_Inputs(inputs);
    inputs.reserialize_interval = "10";
    job.Set_Inputs(inputs);
    EXPECT_EQ(New_Names(job), (QStringList{"T_100.jpg", "T_110.jpg"}));
    inputs.change_to = "U";
    job.Set_Inputs(inputs);
    EXPECT_EQ(job.Inputs().start_numbering, "8") << "another To finds the range again";
}

TEST_F(Rename_Job_Test, While_A_Formula_Has_A_Fault_The_Names_Stay)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg"}));
    job.Set_Inputs(From_To("IMG", "Trip"));
    Rename_Inputs faulty = With_Formula(From_To("IMG", "Sea"), "1 + + )");
    job.Set_Inputs(faulty);
    ASSERT_TRUE(job.Fault());
    EXPECT_EQ(New_Names(job), QStringList{"Trip_7.jpg"});
    faulty.formula.reset();
    faulty.start_numbering = job.Inputs().start_numbering;
    job.Set_Inputs(faulty);
    EXPECT_FALSE(job.Fault());
    EXPECT_EQ(New_Names(job), QStringList{"Sea_7.jpg"}) << "what was left undone is done";
}

TEST_F(Rename_Job_Test, A_Formula_That_The_Update_Cannot_Compile_Is_Told_And_Gives_No_Names)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg", "IMG_x.jpg"}));
    job.Set_Inputs(From_To("IMG", "Trip"));
    job.Set_Inputs(With_Formula(job.Inputs(), "ChangeTo & & FileName"));
    ASSERT_TRUE(job.Fault());
    EXPECT_FALSE(job.Update_Fault()) << "the check kept it from the update";
    job.Update_Names();
    ASSERT_TRUE(job.Update_Fault());
    EXPECT_EQ(*job.Update_Fault(), *job.Fault());
    EXPECT_EQ(New_Names(job), (QStringList{"", "Trip_x.jpg"})) << "a file without a serial needs no formula";
    job.Set_Inputs(From_To("IMG", "Trip"));
    EXPECT_FALSE(job.Update_Fault());
}

TEST_F(Rename_Job_Test, A_Formula_That_Fails_For_A_File_Is_No_Fault_Of_The_Update)
{
    Rename_Job job(host, Rows_Of({"IMG_0.jpg"}));
    job.Set_Inputs(With_Formula(From_To("IMG", "x"), "14 / FileSerial"));
    EXPECT_FALSE(job.Fault());
    EXPECT_FALSE(job.Update_Fault());
    EXPECT_EQ(New_Names(job), QStringList{""});
}

TEST_F(Rename_Job_Test, Duplicates_Are_Counted_By_Pairs_Without_Case)
{
    Rename_Job job(host, Rows_Of({"a1.jpg", "b1.jpg", "c1.jpg", "d2.jpg"}));
    EXPECT_EQ(job.Duplicate_Count(), 0);
    job.Set_User_Name(0, "x.jpg");
    job.Set_User_Name(1, "X.JPG");
    EXPECT_EQ(job.Duplicate_Count(), 1);
    job.Set_User_Name(2, "x.Jpg");
    EXPECT_EQ(job.Duplicate_Count(), 3);
    job.Set_User_Name(3, "c1.jpg");
    EXPECT_EQ(job.Duplicate_Count(), 3) << "c1.jpg itself has another name now";
    job.Set_User_Name(2, "");
    EXPECT_EQ(job.Duplicate_Count(), 2) << "a file that keeps its name counts too";
}

TEST_F(Rename_Job_Test, The_Users_Own_Name_Wins_And_Gets_The_Files_Type)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg", "IMG_8"}));
    job.Set_Inputs(From_To("IMG", "Trip"));
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Trip_7.jpg");
    job.Set_User_Name(0, "Sunset");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Sunset.jpg");
    job.Set_User_Name(0, "Sunset.tif");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Sunset.tif");
    job.Set_User_Name(0, "Sunset.");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Sunset.");
    job.Set_User_Name(0, "");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Trip_7.jpg");
    job.Set_User_Name(1, "Sunset");
    EXPECT_EQ(job.Rows()[1].Final_Name(), "Sunset");
}

TEST_F(Rename_Job_Test, The_Collision_Message_Has_Three_Lines)
{
    EXPECT_EQ(Duplicates_Message(3), "3 file name duplicates have been found.\nThe rename or copy/rename will fail for "
                                     "these files.\nSelect 'Renumber' option to eliminate duplication.");
}

TEST(Changed_Part, Is_What_Stands_Between_The_Common_Ends)
{
    EXPECT_EQ(Changed_Part_Of("IMG_7.jpg", "Trip_7.jpg"), (Changed_Part{0, 4}));
    EXPECT_EQ(Changed_Part_Of("a.jpg", "a.jpg"), (Changed_Part{5, 0}));
    EXPECT_EQ(Changed_Part_Of("aa.jpg", "aaa.jpg"), (Changed_Part{2, 1}));
    EXPECT_EQ(Changed_Part_Of("aaa.jpg", "aa.jpg"), (Changed_Part{2, 0}));
    EXPECT_EQ(Changed_Part_Of("", "x"), (Changed_Part{0, 1}));
    EXPECT_EQ(Changed_Part_Of("a19.jpg", "a10.jpg"), (Changed_Part{1, 2})) << "a number is one";
    EXPECT_EQ(Changed_Part_Of("DSC_0445.jpg", "Lake05.jpg"), (Changed_Part{0, 6}));
    EXPECT_EQ(Changed_Part_Of("a19.jpg", "a9.jpg"), (Changed_Part{1, 0})) << "nothing is new";
}

/// Names and inputs out of few letters, so that matches, collisions and strange places are common.
class Random_Texts {
public:
    explicit Random_Texts(unsigned seed) : random_(seed) {}
    int Number(int below) { return int(random_() % unsigned(below)); }
    QString Text(const char* letters, int most)
    {
        QString text;
        const QString all = Q(letters);
        for (int length = Number(most + 1); length > 0; --length) text += all[Number(int(all.size()))];
        return text;
    }

private:
    std::mt19937 random_;
};

Rename_Inputs Random_Inputs(Random_Texts& random)
{
    Rename_Inputs inputs;
    inputs.pattern_mode = random.Number(2) == 0;
    inputs.change_from = random.Text(inputs.pattern_mode ? "aB-1*?#[]!" : "aB-1", 4);
    inputs.change_to = random.Text("xY-2/", 3);
    if (random.Number(4) == 0) inputs.file_type = random.Text(".tj/", 3);
    inputs.reserialize = random.Number(3) == 0;
    inputs.reserialize_interval = random.Text("-12x", 2);
    return inputs;
}

TEST_F(Rename_Job_Test, Agrees_With_The_Plain_Reference_On_Random_Jobs)
{
    Random_Texts random(20260314);
    const Chosen_Formula formula{.name = Q("f"), .text = Q("\"<\" & FileSerial & FileName & \">\"")};
    const Reference_Formula with_formula = [](const Rename_Row& row, const QString& serial) {
        return "<" + serial + Root_Of_Name(row.file_name) + ">";
    };
    for (int round = 0; round < 20'000; ++round) {
        QStringList names;
        for (int count = random.Number(4) + 1; count > 0; --count)
            names << random.Text("aAbB-_0129", 7) + (random.Number(5) ? ".jpg" : "");
        Rename_Job job(host, Rows_Of(names));
        Rename_Inputs inputs = Random_Inputs(random);
        inputs.start_numbering = job.Inputs().start_numbering;
        const bool has_formula = random.Number(4) == 0;
        if (has_formula) inputs.formula = formula;
        const auto before = job.Rows();
        job.Set_Inputs(inputs);
        const auto expected = Reference_Names(before, inputs, {}, has_formula ? with_formula : Reference_Formula());
        const auto told = [&] {
            return "round " + std::to_string(round) + ": " + names.join(" ").toStdString() + " from \"" +
                   inputs.change_from.toStdString() + "\" to \"" + inputs.change_to.toStdString() + "\"" +
                   (inputs.pattern_mode ? " pattern" : "") + (inputs.reserialize ? " reserialize" : "");
        };
        ASSERT_EQ(New_Names(job), expected.names) << told();
        ASSERT_EQ(job.Inputs().start_numbering, expected.start_numbering) << told();
        ASSERT_EQ(job.Smallest_Serial(), expected.smallest) << told();
        ASSERT_EQ(job.Largest_Serial(), expected.largest) << told();

        const QString typed = random.Text("-012 x", 4);
        Rename_Inputs again = job.Inputs();
        again.start_numbering = typed;
        const auto rows = job.Rows(); // a match behind the beginning keeps what stands there now
        job.Set_Inputs(again);
        ASSERT_EQ(New_Names(job),
                  Reference_Names(rows, again, typed, has_formula ? with_formula : Reference_Formula()).names)
            << told() << " start \"" << typed.toStdString() << '"';
    }
}

} // namespace
